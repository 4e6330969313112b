// SPDX-License-Identifier: MIT
#include <string>
#include <vector>

#include "Tests/Views/SampleEntries.h"
#include "Tests/Views/ViewTest.h"
#include "Velmora/Presentation/HeadwordCharacter.h"

namespace velmora::test {

namespace {

std::vector<int> tones(const DictionaryEntry& entry, const std::string& text) {
    std::vector<int> found;
    for (const HeadwordCharacter& character : HeadwordCharacter::pair(entry, text)) {
        found.push_back(character.tone);
    }
    return found;
}

TEST(HeadwordCharacter, PairsCharactersWithSyllablesByPosition) {
    EXPECT_EQ(tones(samples::entry("你好", "你好", "ni3 hao3", {}), "你好"),
              (std::vector<int>{3, 3}));
    EXPECT_EQ(tones(samples::entry("妈妈", "媽媽", "ma1 ma5", {}), "妈妈"),
              (std::vector<int>{1, 0}));
}

TEST(HeadwordCharacter, LeavesCharactersWithoutASyllableUncolored) {
    const DictionaryEntry entry = samples::entry("你好", "你好", "ni3 hao3", {});
    EXPECT_EQ(tones(entry, "你好吗"), (std::vector<int>{3, 3, HeadwordCharacter::noTone}));
    EXPECT_EQ(tones(entry, "你"), std::vector<int>{3});
    EXPECT_TRUE(tones(entry, "").empty());
}

TEST(HeadwordCharacter, CountsWhatTheReaderSees) {
    const DictionaryEntry entry = samples::entry("学", "學", "xue2 xi2 zhong1", {});
    // A character outside the basic plane, a letter with a combining mark, one with a variation
    // selector.
    EXPECT_EQ(tones(entry, "𠮷e\u0301学\ufe00"), (std::vector<int>{2, 2, 1}));
}

class HeadwordTest : public ViewTest {
  protected:
    /// The colours of the headword's characters, in order.
    std::vector<QColor> colors() {
        std::vector<std::pair<double, QColor>> found;
        collect(item(QStringLiteral("headword")), found);
        std::sort(found.begin(), found.end(),
                  [](const auto& a, const auto& b) { return a.first < b.first; });
        std::vector<QColor> sorted;
        for (const auto& [x, color] : found) {
            sorted.push_back(color);
        }
        return sorted;
    }

  private:
    void collect(QQuickItem& root, std::vector<std::pair<double, QColor>>& found) {
        for (QQuickItem* child : root.childItems()) {
            if (child->property("modelData").isValid()) {
                found.emplace_back(frame(*child).x(), child->property("color").value<QColor>());
            } else {
                collect(*child, found);
            }
        }
    }
};

TEST_F(HeadwordTest, WearsTheColorsOfItsTones) {
    showEntry(samples::mother());
    EXPECT_EQ(colors(), (std::vector<QColor>{theme.red(), theme.secondaryLabel()}));
    showEntry(samples::simplified(samples::entry("你好", "你好", "ni3 hao3", {{"hello"}})));
    EXPECT_EQ(colors(), (std::vector<QColor>{theme.green(), theme.green()}));
}

TEST_F(HeadwordTest, IsPrimaryWhereColorsAreOff) {
    showEntry(samples::mother(), 1, false);
    EXPECT_EQ(colors(), (std::vector<QColor>{theme.label(), theme.label()}));
}

TEST_F(HeadwordTest, ThirdCharacterOfTwoSyllablesIsPrimary) {
    LookupResult result = samples::mother();
    result.matchedText = "妈妈们";
    showEntry(result);
    EXPECT_EQ(colors(), (std::vector<QColor>{theme.red(), theme.secondaryLabel(), theme.label()}));
}

TEST_F(HeadwordTest, FollowsTheAppearanceWhileShown) {
    showEntry(samples::mother());
    appearance.set(DesktopAppearance::ColorScheme::dark);
    EXPECT_EQ(colors(), (std::vector<QColor>{theme.red(), theme.secondaryLabel()}));
    EXPECT_EQ(colors().front(), ThemeColors::dark().red);
}

TEST_F(HeadwordTest, EmptyTextDrawsNothing) {
    LookupResult result = samples::mother();
    result.matchedText.clear();
    showEntry(result);
    EXPECT_TRUE(colors().empty());
    EXPECT_EQ(frame(QStringLiteral("headword")).width(), 0);
}

TEST_F(HeadwordTest, CharactersStandOnePointApart) {
    showEntry(samples::study());
    // Chinese characters are one em wide.
    EXPECT_NEAR(frame(QStringLiteral("headword")).width(), 30 + 1 + 30, 0.5);
    showEntry(samples::study(), 1.5);
    EXPECT_NEAR(frame(QStringLiteral("headword")).width(), 45 + 1 + 45, 0.5);
}

}  // namespace

}  // namespace velmora::test
