// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <cmath>

#include "Tests/Desktop/Support/HoverStage.h"
#include "Tests/Desktop/Support/LookupExpectations.h"
#include "Tests/Desktop/Support/PixelPrograms.h"

// The same things are seen of every program. Rectangles are pixels of the X server.
namespace velmora::test {

/// A program on a desktop with a compositor or without.
struct PixelCase {
    ReadProgram program;
    bool compositor = false;

    std::string name() const { return program.name + (compositor ? "-composited" : ""); }
};

/// For the messages of failed tests.
void PrintTo(const PixelCase& each, std::ostream* stream) {
    *stream << each.name();
}

namespace {

/// How far the outline may be from the glyphs.
constexpr double tolerance = 3;

/// How many of the words must be right. Letters of single black or white pixels are hard to tell.
double leastShareOfRightWords(const ReadProgram& program) {
    return program.executable == "xterm" ? 0.85 : 0.94;
}

std::vector<PixelCase> everyCase() {
    std::vector<PixelCase> cases;
    for (const bool compositor : {false, true}) {
        for (const ReadProgram& program : pixelPrograms()) {
            cases.push_back({program, compositor});
        }
    }
    return cases;
}

std::string testName(const testing::TestParamInfo<PixelCase>& info) {
    std::string name = info.param.name();
    for (char& character : name) {
        character = character == '-' ? '_' : character;
    }
    return name;
}

class PixelTest : public testing::TestWithParam<PixelCase> {
  public:
    static void TearDownTestSuite() { stage_.reset(); }

  protected:
    void SetUp() override {
        if (shown_ != GetParam().name()) {
            shown_ = GetParam().name();
            stage_.reset();
            HoverStage::Options options;
            options.compositor = GetParam().compositor;
            stage_ = std::make_unique<HoverStage>(GetParam().program, options);
        }
        ASSERT_TRUE(stage_) << "an earlier test tells why the program cannot be shown";
        stage_->leave();
    }

    void TearDown() override {
        if (stage_ == nullptr) {
            return;
        }
        keepPicture(HasFailure() ? "-failed" : "");
        stage_->desktop().releaseKey("Shift_L");
    }

    static HoverStage& stage() { return *stage_; }

    /// Leaves a picture of the desktop in the build folder.
    static void keepPicture(const std::string& suffix) {
        const std::string test = testing::UnitTest::GetInstance()->current_test_info()->name();
        std::string name = test;
        for (char& character : name) {
            character = character == '/' ? '-' : character;
        }
        VirtualDesktop::savePng(
            stage().desktop().screenshot(),
            std::string(VELMORA_BUILD_FOLDER) + "/pixels-" + name + suffix + ".png");
    }

    /// Counts whether a hover over a character shows its word, and checks the outline if so.
    void note(const Hover& hover, std::size_t line, std::size_t position);
    void expectMostRight() const;

    /// Hovers the beginning of the next word, so near that the lookup before it is still up.
    static Hover hoverBeside(std::size_t line, std::size_t position);

    static void expectOutline(const Hover& hover, std::size_t line, const MatchedTextRange& word);

  private:
    static inline std::unique_ptr<HoverStage> stage_;
    static inline std::string shown_;

    int hovers_ = 0;
    int right_ = 0;
    std::string wrong_;
};

void PixelTest::expectOutline(const Hover& hover, std::size_t line, const MatchedTextRange& word) {
    const double reach = tolerance + GetParam().program.outline;
    test::expectOutline(stage(), hover, line, word, {tolerance, reach, reach});
}

void PixelTest::note(const Hover& hover, std::size_t line, std::size_t position) {
    const LookupResult word = stage().text().word(line, position);
    ++hovers_;
    if (hover.word() == word.matchedText &&
        hover.hoveredCharacter() == stage().text().character(line, position)) {
        ++right_;
        SCOPED_TRACE(word.matchedText + ": " + hover.record.dump());
        expectOutline(hover, line, word.range);
        EXPECT_TRUE(hover.popover);
    } else {
        wrong_ +=
            word.matchedText + ": " + hover.record.dump() + "\n" + stage().explain(hover.pointer);
    }
}

void PixelTest::expectMostRight() const {
    const double least = leastShareOfRightWords(GetParam().program) * hovers_;
    EXPECT_GE(right_, static_cast<int>(least)) << wrong_;
    RecordProperty("right", right_);
    RecordProperty("hovers", hovers_);
}

TEST_P(PixelTest, showsTheWordsUnderThePointer) {
    for (std::size_t line = 0; line < stage().lines().size(); ++line) {
        // The first, the last and some in between, others in each line.
        for (const std::size_t position :
             {std::size_t{0}, SampleText::charactersPerLine - 1, 1 + line, 4 + line, 7 + line}) {
            note(stage().hover(line, position), line, position);
        }
    }
    expectMostRight();
}

Hover PixelTest::hoverBeside(std::size_t line, std::size_t position) {
    // A compositor shows the popover's shadow in a window of its own.
    EXPECT_GE(stage().velmora().windows().size(), 2U);
    const Rect cell = stage().lines().at(line).cells(position);
    return stage().hover(
        Point{std::floor(cell.minX() + cell.width * 0.4), std::floor(cell.midY())});
}

/// The pointer goes on to the next word while the outline and the bubble are in the way.
TEST_P(PixelTest, readsBesideItsOwnHighlight) {
    for (std::size_t line = 0; line < stage().lines().size(); ++line) {
        const std::vector<LookupResult> words = stage().text().words(line);
        const auto last = static_cast<std::size_t>(words.at(1).range.end - 1);
        const Hover first = stage().hover(line, last);
        note(first, line, last);
        if (first.popover) {
            note(hoverBeside(line, last + 1), line, last + 1);
        }
    }
    expectMostRight();
}

/// The dictionary covers the lines below with Chinese of its own.
TEST_P(PixelTest, readsBesideItsOwnDictionary) {
    stage().desktop().pressKey("Shift_L");
    for (const std::size_t line : {1U, 3U}) {
        stage().leave();
        const std::vector<LookupResult> words = stage().text().words(line);
        const auto last = static_cast<std::size_t>(words.at(1).range.end - 1);
        const Hover first = stage().hover(line, last);
        note(first, line, last);
        if (!first.popover) {
            continue;
        }
        const Hover next = hoverBeside(line, last + 1);
        note(next, line, last + 1);
        if (next.popover) {
            EXPECT_EQ(next.record.at("match").at("mode"), "dictionary");
        }
    }
    expectMostRight();
}

TEST_P(PixelTest, leavesTheFocusAndPlacesWithoutTextAlone) {
    const std::uint64_t focused = stage().desktop().focusedWindow();
    const Hover hover = stage().hover(0, 5);
    EXPECT_TRUE(hover.popover);
    EXPECT_EQ(stage().desktop().focusedWindow(), focused);
    const Hover nothing = stage().hover({stage().blankPlace().x + 40, stage().blankPlace().y + 30});
    ASSERT_TRUE(nothing.record.is_object());
    EXPECT_EQ(nothing.word(), "");
    EXPECT_TRUE(stage().waitForWindows(0));
}

INSTANTIATE_TEST_SUITE_P(Over, PixelTest, testing::ValuesIn(everyCase()), testName);

}  // namespace
}  // namespace velmora::test
