// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <cmath>

#include "Tests/Desktop/Support/HoverStage.h"
#include "Tests/Desktop/Support/LookupExpectations.h"

// The same things are seen of every program. Rectangles are pixels of the X server.
namespace velmora::test {

/// For the messages of failed tests.
void PrintTo(const ReadProgram& program, std::ostream* stream) {
    *stream << program.name;
}

namespace {

class HoverTest : public testing::TestWithParam<ReadProgram> {
  public:
    static void TearDownTestSuite() { stage_.reset(); }

  protected:
    void SetUp() override {
        if (stage_ == nullptr || shown_ != GetParam().name) {
            stage_.reset();
            stage_ = std::make_unique<HoverStage>(GetParam());
            shown_ = GetParam().name;
        }
        stage_->leave();
    }

    void TearDown() override {
        if (stage_ != nullptr) {
            stage_->desktop().releaseKey("Shift_L");
            if (HasFailure()) {
                VirtualDesktop::savePng(
                    stage_->desktop().screenshot(),
                    std::string(VELMORA_BUILD_FOLDER) + "/hover-" + GetParam().name + ".png");
            }
        }
    }

    static HoverStage& stage() { return *stage_; }

    /// Hovers a character and checks everything that a lookup without Shift shows.
    static Hover expectWord(std::size_t line, std::size_t position);

    static void expectOutline(const Hover& hover, std::size_t line, const MatchedTextRange& word);

  private:
    static inline std::unique_ptr<HoverStage> stage_;
    static inline std::string shown_;
};

void HoverTest::expectOutline(const Hover& hover, std::size_t line, const MatchedTextRange& word) {
    // Programs tell of lines with the room between them.
    const double room = stage().lines().at(line).cells(0).height / 2;
    test::expectOutline(stage(), hover, line, word, {.aboveAndBelow = room});
}

Hover HoverTest::expectWord(std::size_t line, std::size_t position) {
    const Hover hover = stage().hover(line, position);
    const LookupResult word = stage().text().word(line, position);
    SCOPED_TRACE(word.matchedText + ": " + hover.record.dump() +
                 (hover.word() == word.matchedText ? "" : "\n" + stage().explain(hover.pointer)));
    EXPECT_EQ(hover.hoveredCharacter(), stage().text().character(line, position));
    EXPECT_EQ(hover.word(), word.matchedText);
    expectOutline(hover, line, word.range);
    expectBubbleAbove(stage(), hover);
    return hover;
}

TEST_P(HoverTest, showsTheWordsUnderThePointer) {
    for (std::size_t line = 0; line < stage().lines().size(); ++line) {
        const std::size_t last = SampleText::charactersPerLine - 1;
        // The first, the last and one in between, another one in each line.
        expectWord(line, 0);
        expectWord(line, last);
        expectWord(line, 4 + line);
    }
}

TEST_P(HoverTest, leavesTheFocusWhereItIs) {
    const std::uint64_t focused = stage().desktop().focusedWindow();
    ASSERT_NE(focused, 0U);
    const Hover hover = stage().hover(1, 3);
    ASSERT_TRUE(hover.popover);
    EXPECT_EQ(stage().desktop().focusedWindow(), focused);
    stage().desktop().pressKey("Shift_L");
    ASSERT_TRUE(stage().desktop().waitUntil([&] {
        Hover later = hover;
        stage().collectWindows(later);
        return later.popover && later.popover->height >= 180;
    }));
    EXPECT_EQ(stage().desktop().focusedWindow(), focused);
}

TEST_P(HoverTest, opensTheDictionaryWhereShiftIsHeldAtTheDwell) {
    stage().desktop().pressKey("Shift_L");
    const Hover hover = stage().hover(1, 6);
    const LookupResult word = stage().text().word(1, 6);
    EXPECT_EQ(hover.word(), word.matchedText);
    EXPECT_EQ(hover.record.at("match").at("mode"), "dictionary");
    expectOutline(hover, 1, word.range);
    expectDictionaryBelow(stage(), hover);
}

TEST_P(HoverTest, turnsTheBubbleIntoTheDictionaryWhenShiftIsPressedLater) {
    Hover hover = expectWord(2, 4);
    stage().desktop().pressKey("Shift_L");
    ASSERT_TRUE(stage().desktop().waitUntil([&] {
        stage().collectWindows(hover);
        return hover.popover && hover.popover->height >= 180;
    }));
    expectDictionaryBelow(stage(), hover);
    // It stays when the key is let go.
    stage().desktop().releaseKey("Shift_L");
    stage().leave();
    const Hover next = stage().hover(5, 0);
    ASSERT_TRUE(next.record.is_object());
    EXPECT_EQ(next.record.at("match").at("mode"), "pinyin");
}

TEST_P(HoverTest, hidesWhenThePointerMovesAway) {
    const Hover hover = expectWord(3, 6);
    const Rect area = stage().outlined(hover);
    // Within 18 points of the word it stays; the next record is that of a dwell there.
    stage().hover({std::floor(area.midX()), std::floor(area.maxY() + 8)});
    stage().leave();
    EXPECT_TRUE(stage().velmora().windows().empty());
}

TEST_P(HoverTest, hidesAtAClick) {
    const Hover hover = expectWord(5, 9);
    stage().desktop().pressButton(1);
    EXPECT_TRUE(stage().waitForWindows(0));
    stage().desktop().releaseButton(1);
}

TEST_P(HoverTest, looksUpASelectionWordByWord) {
    const std::string selected = "天气很好";
    constexpr std::size_t line = 1;
    const MatchedTextRange range{3, 7};
    stage().select(line, static_cast<std::size_t>(range.start),
                   static_cast<std::size_t>(range.end) - 1);
    stage().leave();
    const Hover hover = stage().hover(line, 4);
    SCOPED_TRACE(stage().explain(hover.pointer));
    ASSERT_TRUE(hover.record.is_object());
    EXPECT_EQ(hover.record.at("probe").at("source"), "selectedText");
    EXPECT_EQ(hover.text(), selected);
    const std::vector<LookupResult> words = stage().text().wordsOf(selected);
    ASSERT_EQ(hover.record.at("results").size(), words.size());
    for (std::size_t i = 0; i < words.size(); ++i) {
        EXPECT_EQ(hover.record.at("results")[i].at("matchedWord"), words[i].matchedText);
    }
    expectOutline(hover, line, range);
    expectBubbleAbove(stage(), hover);
    Hover list = hover;
    stage().desktop().pressKey("Shift_L");
    EXPECT_TRUE(stage().desktop().waitUntil([&] {
        stage().collectWindows(list);
        return list.popover && list.popover->width == 430 && list.popover->height == 430;
    }));
    stage().desktop().releaseKey("Shift_L");
    const Point blank = stage().blankPlace();
    stage().desktop().click(static_cast<int>(blank.x), static_cast<int>(blank.y));
}

class TypingTest : public HoverTest {};

TEST_P(TypingTest, goesOnInTheProgram) {
    // Behind the last line's words there is room that nothing of ours covers.
    const TextLine& line = stage().lines().back();
    stage().desktop().click(static_cast<int>(line.ink.maxX() + 30),
                            static_cast<int>(line.ink.midY()));
    stage().desktop().settledScreenshot(line.ink);
    const Hover hover = stage().hover(stage().lines().size() - 1, 1);
    ASSERT_TRUE(hover.popover);
    const Rect room{line.ink.maxX() + 3, line.ink.minY(), 120, line.ink.height};
    for (int i = 0; i < 6; ++i) {
        stage().desktop().typeKey("w");
    }
    EXPECT_TRUE(stage().desktop().waitUntil(
        [&] {
            const auto typed =
                inkInside(stage().desktop().screenshot(room), {room.x, room.y}, room);
            return typed && typed->width > 20;
        },
        std::chrono::seconds(20)));
    EXPECT_EQ(stage().velmora().windows().size(), 2U);
}

std::string nameOf(const testing::TestParamInfo<ReadProgram>& info) {
    std::string name = info.param.name;
    for (char& character : name) {
        character = character == '-' ? '_' : character;
    }
    return name;
}

std::vector<ReadProgram> editors() {
    std::vector<ReadProgram> result;
    for (const ReadProgram& program : ReadProgram::all()) {
        if (program.isEditor) {
            result.push_back(program);
        }
    }
    return result;
}

INSTANTIATE_TEST_SUITE_P(Over, HoverTest, testing::ValuesIn(ReadProgram::all()), nameOf);
INSTANTIATE_TEST_SUITE_P(In, TypingTest, testing::ValuesIn(editors()), nameOf);

}  // namespace
}  // namespace velmora::test
