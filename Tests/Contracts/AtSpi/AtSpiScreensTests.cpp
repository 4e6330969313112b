// SPDX-License-Identifier: MIT
// Two screens of different ratios, the primary one away from the corner of the desktop: the same
// real window is read on each of them.
#include <gtest/gtest.h>

#include <QList>
#include <QString>

#include "Tests/Contracts/AtSpi/AtSpiBench.h"
#include "Tests/Support/TextCapture/ExtractionStage.h"

namespace velmora::test {
namespace {

// Native pixels.
constexpr Rect leftFrame{0, 0, 800, 1000};
constexpr Rect primaryFrame{800, 200, 800, 800};

/// The screens of one test, and what a native rectangle on each must become, counted here anew.
struct TwoScreens {
    double leftRatio = 1;
    double primaryRatio = 1;

    ScreenGeometry geometry() const {
        return ScreenGeometry(
            {{1, primaryFrame, primaryRatio, primaryFrame}, {2, leftFrame, leftRatio, leftFrame}});
    }

    /// Points right of and below the primary screen's corner.
    Rect capture(const Rect& native) const {
        const bool isLeft = native.midX() < primaryFrame.x;
        const Rect& frame = isLeft ? leftFrame : primaryFrame;
        const double ratio = isLeft ? leftRatio : primaryRatio;
        return {frame.x - primaryFrame.x + (native.x - frame.x) / ratio,
                frame.y - primaryFrame.y + (native.y - frame.y) / ratio, native.width / ratio,
                native.height / ratio};
    }

    /// Points right of and above the primary screen's lower corner.
    Rect screen(const Rect& native) const {
        const Rect above = capture(native);
        return {above.x, primaryFrame.height / primaryRatio - above.maxY(), above.width,
                above.height};
    }
};

void expectNear(const Rect& found, const Rect& expected) {
    EXPECT_NEAR(found.x, expected.x, 0.01);
    EXPECT_NEAR(found.y, expected.y, 0.01);
    EXPECT_NEAR(found.width, expected.width, 0.01);
    EXPECT_NEAR(found.height, expected.height, 0.01);
}

/// A program that shows the text, drawn at one of the ratios.
struct ScreenCase {
    const char* name;
    std::vector<std::string> command;
    ChildProcess::Environment environment;
    TwoScreens screens;
    double growth = 1;  ///< From the other screen to the primary one, as the program draws.
};

void PrintTo(const ScreenCase& each, std::ostream* stream) {
    *stream << each.name;
}

std::vector<ScreenCase> everyCase() {
    const std::vector<std::string> gtk3{"/usr/bin/python3",
                                        std::string(VELMORA_FIXTURES) + "/Toolkits/gtk3_sample.py"};
    const std::vector<std::string> qt6{std::string(VELMORA_BUILD_FOLDER) + "/velmora_qt_sample"};
    return {{"Gtk3", gtk3, {}, {2, 1}},
            {"Gtk3AtTwice", gtk3, {{"GDK_SCALE", "2"}}, {1, 2}},
            {"Qt6", qt6, {}, {2, 1}},
            {"Qt6AtTwice", qt6, {{"QT_SCALE_FACTOR", "2"}}, {1, 2}},
            // Each screen's own ratio, which the program follows as it moves between them.
            {"Qt6AtEach", qt6, {{"QT_SCREEN_SCALE_FACTORS", "left=1;right=2"}}, {1, 2}, 2}};
}

class AtSpiScreens : public testing::TestWithParam<ScreenCase> {
  protected:
    void SetUp() override {
        bench.desktop().run(
            {"xrandr", "--setmonitor", "*right", "800/200x800/200+800+200", "screen"});
        bench.desktop().run({"xrandr", "--setmonitor", "left", "800/200x1000/250+0+0", "none"});
        std::vector<std::string> command = GetParam().command;
        command.push_back(bench.desktop().writeFile("sample.txt", contractText).string());
        bench.start(std::move(command), GetParam().environment);
    }

    void TearDown() override {
        if (HasFailure()) {
            bench.saveScreenshot(std::string("AtSpiScreens.") + GetParam().name);
        }
    }

    /// Puts the window there and reads one character of it, natively and on the screens; its cell
    /// in native pixels.
    Rect readAt(const Rect& place);
    void expectReading(const Rect& nativeCell);
    void expectProbe(const Rect& nativeCell);

    AtSpiBench bench;
};

Rect AtSpiScreens::readAt(const Rect& place) {
    bench.setScreens(ScreenGeometry({{1, {0, 0, 1600, 1000}, 1, {0, 0, 1600, 1000}}}));
    bench.moveWindow(place);
    // Where the character is drawn, known by its ink.
    std::optional<Rect> cell;
    const bool isDrawn = bench.desktop().waitUntil([&] {
        const auto element = bench.findNow("国");
        cell = element ? element->boundsForRange({positionIn(*element, "国"), 1}) : std::nullopt;
        const auto ink = cell ? bench.ink(*cell) : std::nullopt;
        return ink && ink->width > cell->width * 0.6 && ink->height > cell->height * 0.4 &&
               std::abs(ink->midX() - cell->midX()) < cell->width * 0.15;
    });
    if (!isDrawn) {
        ADD_FAILURE() << "the character is not where the program says";
        return {};
    }
    bench.setScreens(GetParam().screens.geometry());
    expectReading(*cell);
    expectProbe(*cell);
    return *cell;
}

void AtSpiScreens::expectReading(const Rect& nativeCell) {
    const Rect cell = GetParam().screens.capture(nativeCell);
    const Point middle{cell.midX(), cell.midY()};
    const auto element = bench.system().elementAtPosition(middle);
    ASSERT_NE(element, nullptr);
    const auto range = element->rangeForPosition(middle);
    ASSERT_TRUE(range);
    EXPECT_EQ(stringAt(*element, range->location, range->length), "国");
    const auto bounds = element->boundsForRange(*range);
    ASSERT_TRUE(bounds);
    expectNear(*bounds, cell);
}

void AtSpiScreens::expectProbe(const Rect& nativeCell) {
    ExtractionStage stage;
    stage.screens->list = GetParam().screens.geometry().screens();
    ExtractionServices services = stage.services();
    services.accessibility = {std::shared_ptr<void>(), &bench.system()};
    const Rect cell = GetParam().screens.screen(nativeCell);
    const auto probe = AccessibilityTextExtractor::create(services)->extract(
        Point{cell.midX(), cell.midY()}, std::vector<Rect>());
    ASSERT_TRUE(probe);
    EXPECT_EQ(probe->source, TextProbe::Source::hoveredText);
    // One for each character; the two at the beginning are pairs.
    const auto offset = static_cast<qsizetype>(probe->hoveredCharacterOffset);
    const QList<uint> characters = QString::fromStdString(probe->text).toUcs4();
    ASSERT_LT(offset, characters.size());
    EXPECT_EQ(characters.at(offset), U'国') << probe->text;
    ASSERT_TRUE(probe->anchorRect);
    expectNear(*probe->anchorRect, cell);
    ASSERT_TRUE(probe->rangeAnchorRect);
    const auto ranged = probe->rangeAnchorRect(offset, offset + 1);
    ASSERT_TRUE(ranged);
    expectNear(*ranged, cell);
}

TEST_P(AtSpiScreens, ReadsOnEitherScreen) {
    Rect onPrimary;
    Rect onOther;
    {
        SCOPED_TRACE("on the primary screen");
        onPrimary = readAt({830, 260, 700, 640});
    }
    {
        SCOPED_TRACE("on the other one, left of and above it");
        onOther = readAt({30, 60, 700, 640});
    }
    EXPECT_NEAR(onPrimary.height / onOther.height, GetParam().growth, 0.1);
}

INSTANTIATE_TEST_SUITE_P(, AtSpiScreens, testing::ValuesIn(everyCase()),
                         [](const auto& each) { return each.param.name; });

}  // namespace
}  // namespace velmora::test
