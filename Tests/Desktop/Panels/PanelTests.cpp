// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>
#include <unistd.h>

#include <QCoreApplication>
#include <QGuiApplication>
#include <QMouseEvent>
#include <QPainter>
#include <QQuickItem>
#include <QRasterWindow>
#include <QScreen>
#include <algorithm>
#include <cstdlib>

#include "Tests/Desktop/Support/GuiTestRun.h"
#include "Tests/Support/VirtualDesktop/VirtualDesktop.h"
#include "Tests/Views/FakeAppearance.h"
#include "Tests/Views/FakeCompositor.h"
#include "Tests/Views/FixedScreens.h"
#include "Tests/Views/RecordingSpeaker.h"
#include "Velmora/Platform/LinuxX11/X11ClientRange.h"
#include "Velmora/Platform/LinuxX11/X11ScreenCapture.h"
#include "Velmora/Presentation/HighlightOverlayController.h"
#include "Velmora/Presentation/PopoverPanelController.h"

namespace velmora::test {

namespace {

constexpr int screenWidth = 1200;
constexpr int screenHeight = 800;

VirtualDesktop* desktop = nullptr;

/// The program that the user reads: a window that fills the screen with one colour and counts the
/// clicks that reach it.
class ReaderWindow : public QRasterWindow {
  public:
    static constexpr QRgb ground = qRgb(0x20, 0x60, 0xa0);

    int clicks = 0;

  protected:
    void paintEvent(QPaintEvent*) override {
        QPainter(this).fillRect(QRect(QPoint(0, 0), size()), QColor(ground));
    }
    void mousePressEvent(QMouseEvent*) override { ++clicks; }
};

QRgb pixel(int x, int y) {
    const Image image = desktop->screenshot({static_cast<double>(x), static_cast<double>(y), 1, 1});
    return image.row(0)[0] | 0xff000000U;
}

bool close(QRgb a, QRgb b, int tolerance) {
    return std::abs(qRed(a) - qRed(b)) <= tolerance &&
           std::abs(qGreen(a) - qGreen(b)) <= tolerance &&
           std::abs(qBlue(a) - qBlue(b)) <= tolerance;
}

LookupResult word() {
    LookupResult result;
    EntryDefinition definition;
    definition.glosses = {"to study"};
    result.matchedText = "学习";
    result.entry = DictionaryEntry("学习", "學習", "xue2 xi2", {definition});
    return result;
}

class PanelTest : public testing::Test {
  protected:
    /// In screen space; the panel below it starts 10 points under it.
    static constexpr Rect anchor{600, 500, 60, 24};

    void SetUp() override {
        compositor.set(false);
        reader.setVisibility(QWindow::FullScreen);
        ASSERT_TRUE(until([this] { return reader.isExposed(); }));
        desktop->activateWindow(reader.winId());
        ASSERT_TRUE(until([this] {
            return QGuiApplication::focusWindow() == &reader &&
                   pixel(600, 20) == ReaderWindow::ground;
        }));
        focused = desktop->focusedWindow();
    }

    void TearDown() override { EXPECT_EQ(desktop->focusedWindow(), focused); }

    /// Lets this process and the server work until the condition holds.
    static bool until(const std::function<bool()>& condition) {
        return desktop->waitUntil([&condition] {
            QCoreApplication::processEvents();
            return condition();
        });
    }

    /// The server's windows of this process but the reader's, the topmost last.
    std::vector<VirtualDesktop::Window> overlays() const {
        std::vector<VirtualDesktop::Window> found;
        for (const VirtualDesktop::Window& window : desktop->windows()) {
            if (window.overrideRedirect && window.processId == getpid()) {
                found.push_back(window);
            }
        }
        return found;
    }

    /// The visible panel in pixels from the top left corner of the screen.
    QRect panelFrame() const {
        const Rect frame = popover.visiblePanelFrame().value_or(Rect{});
        return QRectF(frame.x, screenHeight - frame.maxY(), frame.width, frame.height).toRect();
    }

    void showEntry() {
        bool painted = false;
        popover.setFramePaintedObserver([&painted] { painted = true; });
        popover.show({word()}, std::nullopt, anchor, true, 1);
        ASSERT_TRUE(until([&painted] { return painted; }));
        popover.setFramePaintedObserver({});
    }

    ReaderWindow reader;
    std::uint64_t focused = 0;
    FakeAppearance appearance;
    FakeCompositor compositor;
    Theme theme{appearance, compositor};
    ViewEngine views{theme};
    FixedScreens screens{
        {{1, {0, 0, screenWidth, screenHeight}, 1, {0, 0, screenWidth, screenHeight}}}};
    RecordingSpeaker speaker;
    PopoverPanelController popover{speaker, screens, views};
    HighlightOverlayController highlight{screens, theme};
};

TEST_F(PanelTest, StandsUnderTheAnchorAboveAFullScreenWindow) {
    showEntry();
    const QRect frame = panelFrame();
    EXPECT_EQ(frame, QRect(630 - 180, screenHeight - 500 + 10, 360, 180));
    ASSERT_TRUE(until([&] {
        return close(pixel(frame.center().x(), frame.bottom() - 20),
                     theme.colors().opaqueMaterial.rgb(), 2);
    }));
    const auto windows = overlays();
    ASSERT_EQ(windows.size(), 1U);
    EXPECT_EQ(windows.front().client, (Rect{450, 310, 360, 180}));
    EXPECT_EQ(desktop->windows().back().id, windows.front().id);
    EXPECT_EQ(desktop->focusedWindow(), focused);
}

TEST_F(PanelTest, ButtonWorksWithoutTakingTheFocus) {
    showEntry();
    auto* speakerButton = popover.panel()->view()->findChild<QQuickItem*>("speaker");
    ASSERT_NE(speakerButton, nullptr);
    const QPointF middle =
        speakerButton->mapToScene({speakerButton->width() / 2, speakerButton->height() / 2});
    const QPoint place = panelFrame().topLeft() + middle.toPoint();
    desktop->click(place.x(), place.y());
    ASSERT_TRUE(until([this] { return !speaker.spoken.empty(); }));
    EXPECT_EQ(speaker.spoken, std::vector<std::string>{"学习"});
    EXPECT_EQ(desktop->focusedWindow(), focused);
    EXPECT_EQ(QGuiApplication::focusWindow(), &reader);
    EXPECT_EQ(reader.clicks, 0);
    EXPECT_TRUE(popover.visiblePanelFrame().has_value());
}

TEST_F(PanelTest, RestingOnAButtonTellsWhatItDoes) {
    showEntry();
    auto* button = popover.panel()->view()->findChild<QQuickItem*>("speaker");
    const QPoint place = panelFrame().topLeft() +
                         button->mapToScene({button->width() / 2, button->height() / 2}).toPoint();
    desktop->movePointer(place.x() + 3, place.y());
    desktop->movePointer(place.x(), place.y());
    const auto tag = [this]() -> QQuickItem* {
        for (QQuickItem* child : popover.panel()->contentItem()->childItems()) {
            if (child->property("due").isValid() && child->isVisible()) {
                return child;
            }
        }
        return nullptr;
    };
    ASSERT_TRUE(until([&tag] { return tag() != nullptr; }));
    EXPECT_EQ(tag()->property("text").toString(), QStringLiteral("Pronounce"));
    desktop->movePointer(20, 20);
    EXPECT_TRUE(until([&tag] { return tag() == nullptr; }));
}

TEST_F(PanelTest, ScrollsItsListWithTheWheel) {
    std::vector<LookupResult> results(30, word());
    popover.show(results, "学习", anchor, true, 1);
    auto* list = popover.panel()->view()->findChild<QQuickItem*>("list");
    ASSERT_NE(list, nullptr);
    const QPoint place = panelFrame().center();
    desktop->movePointer(place.x(), place.y());
    ASSERT_TRUE(until([&] { return pixel(place.x(), place.y()) != ReaderWindow::ground; }));
    desktop->click(place.x(), place.y(), 5);
    EXPECT_TRUE(until([list] { return list->property("contentY").toDouble() > 0; }));
    EXPECT_EQ(desktop->focusedWindow(), focused);
}

TEST_F(PanelTest, CornersAreCutWhereWindowsAreNotBlended) {
    showEntry();
    const QRect frame = panelFrame();
    ASSERT_TRUE(until([&] {
        return close(pixel(frame.x() + 40, frame.y() + 8), theme.colors().opaqueMaterial.rgb(), 2);
    }));
    for (const QPoint corner :
         {frame.topLeft(), frame.topRight(), frame.bottomLeft(), frame.bottomRight()}) {
        EXPECT_TRUE(until([&] { return pixel(corner.x(), corner.y()) == ReaderWindow::ground; }));
    }
    EXPECT_EQ(popover.panel()->shadow(), nullptr);
}

TEST_F(PanelTest, FollowsTheCompositor) {
    showEntry();
    const QRect frame = panelFrame();
    const QPoint inside(frame.x() + 40, frame.bottom() - 30);
    const QPoint below(frame.center().x(), frame.bottom() + 4);

    ChildProcess& picom =
        desktop->launch({"picom", "--backend", "xrender", "--config", "/dev/null"});
    compositor.set(true);
    // Translucent: a little of the ground's colour shows through; the shadow darkens the outside.
    const QRgb opaque = theme.colors().opaqueMaterial.rgb();
    EXPECT_TRUE(until([&] {
        const QRgb seen = pixel(inside.x(), inside.y());
        return seen != opaque && close(seen, opaque, 12);
    })) << desktop->log();
    EXPECT_TRUE(until(
        [&] { return qBlue(pixel(below.x(), below.y())) < qBlue(ReaderWindow::ground) - 6; }));
    EXPECT_EQ(panelFrame(), frame);

    // A click on the shadow reaches the program below.
    desktop->click(below.x(), below.y());
    EXPECT_TRUE(until([this] { return reader.clicks == 1; }));

    compositor.set(false);
    desktop->stop(picom);
    EXPECT_TRUE(until([&] {
        return pixel(below.x(), below.y()) == ReaderWindow::ground &&
               close(pixel(inside.x(), inside.y()), opaque, 1) &&
               pixel(frame.x(), frame.y()) == ReaderWindow::ground;
    }));
}

TEST_F(PanelTest, HighlightLetsClicksThrough) {
    highlight.show(anchor);
    const QRect outline(597, screenHeight - 527, 66, 30);
    ASSERT_TRUE(until([&] {
        return close(pixel(outline.x() + 2, outline.center().y()), theme.accent().rgb(), 40);
    }));
    const auto windows = overlays();
    ASSERT_EQ(windows.size(), 1U);
    EXPECT_EQ(windows.front().client, (Rect{597, 273, 66, 30}));
    // Only the frame has a shape; the characters stay as they are.
    EXPECT_EQ(pixel(outline.center().x(), outline.center().y()), ReaderWindow::ground);
    desktop->click(outline.center().x(), outline.center().y());
    EXPECT_TRUE(until([this] { return reader.clicks == 1; })) << reader.clicks;
    desktop->click(outline.x() + 2, outline.center().y());
    EXPECT_TRUE(until([this] { return reader.clicks == 2; })) << reader.clicks;
    EXPECT_EQ(desktop->focusedWindow(), focused);
}

TEST_F(PanelTest, HighlightTintsTheCharactersUnderACompositor) {
    ChildProcess& picom =
        desktop->launch({"picom", "--backend", "xrender", "--config", "/dev/null"});
    compositor.set(true);
    highlight.show(anchor);
    EXPECT_TRUE(until([] {
        const QRgb seen = pixel(630, screenHeight - 512);
        return seen != ReaderWindow::ground && close(seen, ReaderWindow::ground, 40);
    }));
    desktop->click(630, screenHeight - 512);
    EXPECT_TRUE(until([this] { return reader.clicks == 1; }));
    desktop->stop(picom);
}

TEST_F(PanelTest, HighlightMovesAndHides) {
    highlight.show({0, 0, 0, 10});
    EXPECT_EQ(highlight.panel(), nullptr);
    highlight.show(anchor);
    const HighlightView* panel = highlight.panel();
    highlight.show({100, 100, 40, 20});
    EXPECT_EQ(highlight.panel(), panel);
    ASSERT_TRUE(until([this] {
        const auto windows = overlays();
        return windows.size() == 1 &&
               windows.front().client == Rect{97, screenHeight - 123, 46, 26};
    }));
    highlight.show({100, 100, 40, 0});
    EXPECT_TRUE(until([this] { return overlays().empty(); }));
}

TEST_F(PanelTest, BubbleBecomesTheCardInTheSamePanel) {
    popover.showPinyin("xué xí", anchor, 1);
    ASSERT_TRUE(until([this] { return overlays().size() == 1; }));
    const auto bubble = overlays().front();
    EXPECT_EQ(bubble.client.maxY(), screenHeight - (524 + 16));
    showEntry();
    ASSERT_TRUE(until([this] {
        return overlays().size() == 1 && overlays().front().client == Rect{450, 310, 360, 180};
    }));
    EXPECT_EQ(overlays().front().id, bubble.id);
    popover.orderOut();
    EXPECT_TRUE(until([this] { return overlays().empty(); }));
    EXPECT_FALSE(popover.visiblePanelFrame().has_value());
}

TEST_F(PanelTest, WarmingUpShowsNothing) {
    popover.warmUp();
    QCoreApplication::processEvents();
    EXPECT_TRUE(overlays().empty());
    EXPECT_FALSE(popover.visiblePanelFrame().has_value());
    showEntry();
    EXPECT_EQ(overlays().size(), 1U);
}

/// Another program's text below, captured by the program itself before and while its highlight and
/// its panel stand over it.
class OwnCaptureTest : public PanelTest, public testing::WithParamInterface<bool> {
  protected:
    static constexpr Rect area{420, 230, 420, 280};  ///< Of all that is shown over the text.

    void SetUp() override {
        PanelTest::SetUp();
        if (GetParam()) {
            picom_ = &desktop->launch({"picom", "--backend", "xrender", "--config", "/dev/null"});
        }
        compositor.set(GetParam());
        // The reader is a window of this process and would not be in the capture either.
        reader.showNormal();
        reader.setGeometry(20, 20, 200, 100);
        other_ = &desktop->launch({"xterm", "-bg", "white", "-fg", "black", "-geometry", "110x40",
                                   "-e", "sh", "-c", "seq -s ' ' 1 1200; exec sleep 1000"});
        desktop->placeWindow(desktop->waitForWindowOf(*other_).id, {300, 150, 700, 560});
        desktop->activateWindow(reader.winId());
        ASSERT_TRUE(until([this] { return QGuiApplication::focusWindow() == &reader; }));
        desktop->settledScreenshot({300, 150, 700, 560});
        focused = desktop->focusedWindow();
    }

    void TearDown() override {
        PanelTest::TearDown();
        desktop->stop(*other_);
        if (picom_ != nullptr) {
            desktop->stop(*picom_);
        }
    }

    static int differences(const Image& a, const Image& b) {
        int count = 0;
        for (int y = 0; y < a.height(); ++y) {
            for (int x = 0; x < a.width(); ++x) {
                count += (a.row(y)[x] | 0xff000000U) != (b.row(y)[x] | 0xff000000U) ? 1 : 0;
            }
        }
        return count;
    }

    ChildProcess* other_ = nullptr;
    ChildProcess* picom_ = nullptr;
    X11ScreenCapture capture{screens, X11ClientRange::ofApplication()};
};

TEST_P(OwnCaptureTest, ShowsNeitherHighlightNorPanel) {
    const auto before = capture.capture(1, area);
    ASSERT_TRUE(before && before->width() == 420 && before->height() == 280);
    const Image seenBefore = desktop->screenshot(area);
    EXPECT_EQ(differences(*before, seenBefore), 0);

    highlight.show(anchor);
    showEntry();
    const QPoint card(panelFrame().center().x(), panelFrame().bottom() - 20);
    ASSERT_TRUE(until([&] {
        return close(pixel(598, screenHeight - 512), theme.accent().rgb(), 90) &&
               close(pixel(card.x(), card.y()), theme.colors().opaqueMaterial.rgb(), 20);
    }));
    // Everybody else sees much that is new; the panel alone has 360 by 180 pixels.
    EXPECT_GT(differences(seenBefore, desktop->screenshot(area)), 4000);
    const auto during = capture.capture(1, area);
    ASSERT_TRUE(during && during->width() == 420 && during->height() == 280);
    EXPECT_EQ(differences(*before, *during), 0);

    highlight.orderOut();
    popover.orderOut();
    ASSERT_TRUE(until([this] { return overlays().empty(); }));
}

INSTANTIATE_TEST_SUITE_P(, OwnCaptureTest, testing::Bool(),
                         [](const auto& each) { return each.param ? "Composited" : "Plain"; });

}  // namespace

}  // namespace velmora::test

int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    using velmora::test::VirtualDesktop;
    VirtualDesktop virtualDesktop({.width = velmora::test::screenWidth,
                                   .height = velmora::test::screenHeight,
                                   .accessibility = false,
                                   .serverArguments = {}});
    virtualDesktop.enter();
    velmora::test::desktop = &virtualDesktop;
    qputenv("QT_QPA_PLATFORM", "xcb");
    return velmora::test::runGuiTests(argc, argv);
}
