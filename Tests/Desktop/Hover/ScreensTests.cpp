// SPDX-License-Identifier: MIT
// Two screens of different scales, the primary one away from the corner of the desktop: the program
// is read on each of them, and what is shown stands at the word there.
#include <gtest/gtest.h>

#include "Tests/Desktop/Support/HoverStage.h"
#include "Tests/Desktop/Support/LookupExpectations.h"
#include "Tests/Desktop/Support/PixelPrograms.h"

namespace velmora::test {

struct ScreensCase {
    const char* name;
    ReadProgram program;
    double primaryScale;
    double otherScale;
    bool compositor;
    double tolerance;  ///< Between the outline and the glyphs.
};

/// For the messages of failed tests.
void PrintTo(const ScreensCase& each, std::ostream* stream) {
    *stream << each.name;
}

namespace {

// Pixels of the X server.
constexpr Rect otherScreen{0, 0, 1300, 1500};
constexpr Rect primaryScreen{1300, 200, 1300, 1300};
constexpr Rect windowOnOther{100, 130, 1000, 760};
constexpr Rect windowOnPrimary{1400, 330, 1000, 760};

ReadProgram pixelProgram(const std::string& name) {
    for (const ReadProgram& program : pixelPrograms()) {
        if (program.name == name) {
            return program;
        }
    }
    throw std::runtime_error("no program is called " + name);
}

std::vector<ScreensCase> everyCase() {
    return {{"mousepad_primary_doubled", ReadProgram::named("mousepad"), 2, 1, false, 2},
            {"mousepad_other_doubled", ReadProgram::named("mousepad"), 1, 2, true, 2},
            {"image_viewer_primary_doubled", pixelProgram("image-viewer"), 2, 1, false, 3}};
}

class ScreensTest : public testing::TestWithParam<ScreensCase> {
  protected:
    ScreensTest() : stage(GetParam().program, options()) {}

    void TearDown() override {
        stage.desktop().releaseKey("Shift_L");
        if (HasFailure()) {
            keepPicture("failed");
        }
    }

    static HoverStage::Options options() {
        HoverStage::Options result;
        result.desktop.width = 2600;
        result.desktop.height = 1500;
        result.compositor = GetParam().compositor;
        result.window = windowOnPrimary;
        result.monitors = {{"right", primaryScreen, GetParam().primaryScale},
                           {"left", otherScreen, GetParam().otherScale}};
        return result;
    }

    void keepPicture(const std::string& what) {
        VirtualDesktop::savePng(stage.desktop().screenshot(), std::string(VELMORA_BUILD_FOLDER) +
                                                                  "/screens-" + GetParam().name +
                                                                  "-" + what + ".png");
    }

    void expectLookups(const std::string& screen);
    void expectDictionary(Hover hover, const Rect& screen);

    HoverStage stage;
};

void ScreensTest::expectLookups(const std::string& screen) {
    const double room = stage.lines().front().cells(0).height / 2;
    const double tolerance = GetParam().tolerance;
    for (const auto& [line, position] : {std::pair(1U, 3U), std::pair(3U, 6U)}) {
        const Hover hover = stage.hover(line, position);
        const LookupResult word = stage.text().word(line, position);
        SCOPED_TRACE(screen + ", " + word.matchedText + ": " + hover.record.dump() +
                     (hover.word() == word.matchedText ? "" : "\n" + stage.explain(hover.pointer)));
        ASSERT_EQ(hover.word(), word.matchedText);
        EXPECT_EQ(hover.hoveredCharacter(), stage.text().character(line, position));
        expectOutline(stage, hover, line, word.range, {tolerance, tolerance, room});
        expectBubbleAbove(stage, hover);
        keepPicture(screen + "-bubble");
        stage.desktop().pressKey("Shift_L");
        Hover later = hover;
        EXPECT_TRUE(stage.desktop().waitUntil([&] {
            stage.collectWindows(later);
            return later.popover && later.popover->height > hover.popover->height * 2;
        }));
        expectDictionaryBelow(stage, later);
        stage.desktop().settledScreenshot(later.popover.value_or(Rect{}));
        keepPicture(screen + "-dictionary");
        stage.desktop().releaseKey("Shift_L");
        stage.leave();
    }
}

TEST_P(ScreensTest, showsTheWordsWhereTheyAre) {
    ASSERT_TRUE(stage.desktop().waitUntil([&] {
        stage.leave();
        return !stage.hover(0, 0).word().empty();
    })) << stage.explain(stage.lines().front().middle(0));
    stage.leave();
    expectLookups("primary");
    stage.moveWindow(windowOnOther);
    expectLookups("other");
    // And back: the windows have been on both by now.
    stage.moveWindow(windowOnPrimary);
    expectLookups("primary-again");
}

INSTANTIATE_TEST_SUITE_P(Over, ScreensTest, testing::ValuesIn(everyCase()),
                         [](const auto& each) { return std::string(each.param.name); });

}  // namespace
}  // namespace velmora::test
