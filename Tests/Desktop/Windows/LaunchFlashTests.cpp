// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <QImage>
#include <string>

#include "Tests/Desktop/Windows/WindowDesktop.h"
#include "Tests/Views/FakeAppearance.h"
#include "Velmora/Platform/LinuxX11/X11Compositor.h"
#include "Velmora/Platform/LinuxX11/X11Screens.h"
#include "Velmora/Platform/Recorded/ManualClock.h"
#include "Velmora/Presentation/LaunchFlashController.h"

namespace velmora::test {

namespace {

constexpr QColor ground(0x20, 0x60, 0xa0);

/// How far the colour has come from the ground to the badge's own: 0 nothing is to be seen of it,
/// 1 it is as opaque as can be.
double coverage(const QColor& seen, const QColor& whole) {
    return (seen.redF() - ground.redF()) / static_cast<double>(whole.redF() - ground.redF());
}

class LaunchFlashTest : public testing::Test {
  protected:
    void SetUp() override {
        // Compositors paint a picture of the background only where one has been set.
        QImage picture(WindowDesktop::width, WindowDesktop::height, QImage::Format_RGB32);
        picture.fill(ground);
        const std::string file = (WindowDesktop::get().folder() / "ground.png").string();
        ASSERT_TRUE(picture.save(QString::fromStdString(file)));
        WindowDesktop::get().run({"feh", "--no-fehbg", "--bg-fill", file});
        ASSERT_TRUE(WindowDesktop::until([] { return WindowDesktop::pixel(20, 20) == ground; }));
    }
    void TearDown() override { stopCompositor(); }

    void startCompositor() {
        picom_ = &WindowDesktop::get().launch(
            {"picom", "--backend", "xrender", "--config", "/dev/null"});
        ASSERT_TRUE(WindowDesktop::until([this] { return theme.isCompositing(); }));
    }
    void stopCompositor() {
        if (picom_ != nullptr) {
            WindowDesktop::get().stop(*picom_);
            picom_ = nullptr;
            ASSERT_TRUE(WindowDesktop::until([this] { return !theme.isCompositing(); }));
        }
    }

    /// A place of the badge without text.
    QColor seen() const {
        const QRect frame = flash.panel()->geometry();
        return WindowDesktop::pixel(frame.center().x(), frame.y() + 7);
    }
    bool awaitCoverage(double least, double most) {
        return WindowDesktop::until([&] {
            const double value = coverage(seen(), theme.window());
            return value >= least && value <= most;
        });
    }
    bool awaitGround() {
        return WindowDesktop::until([this] { return seen() == ground; });
    }

    FakeAppearance appearance;
    X11Compositor compositor;
    X11Screens screens;
    Theme theme{appearance, compositor};
    ViewEngine views{theme};
    ManualClock clock;
    LaunchFlashController flash{clock, screens, views};

  private:
    ChildProcess* picom_ = nullptr;
};

TEST_F(LaunchFlashTest, FadesInToItsWholeStrengthAndOutUnderACompositor) {
    startCompositor();
    for (int time = 0; time < 5; ++time) {
        flash.flash();
        // Half of the way of an ease-out curve is past before half of the time.
        clock.advance(0.1);
        EXPECT_TRUE(awaitCoverage(0.3, 0.85)) << seen().name().toStdString();
        clock.advance(0.9);
        EXPECT_TRUE(awaitCoverage(0.9, 1.0)) << seen().name().toStdString();
        if (time == 0) {
            WindowDesktop::keepPicture("launch-flash");
        }
        clock.advance(0.85);
        EXPECT_TRUE(awaitCoverage(0.2, 0.85)) << seen().name().toStdString();
        clock.advance(1);
        EXPECT_TRUE(awaitGround()) << seen().name().toStdString();
    }
}

TEST_F(LaunchFlashTest, IsThereAtOnceAndGoneAtOnceWithoutACompositor) {
    flash.flash();
    EXPECT_TRUE(awaitCoverage(0.97, 1.1)) << seen().name().toStdString();
    WindowDesktop::keepPicture("launch-flash-opaque");
    clock.advance(1.61);
    EXPECT_TRUE(awaitGround());
}

TEST_F(LaunchFlashTest, IsNeverLeftFaintByACompositorThatComesOrGoes) {
    startCompositor();
    flash.flash();
    clock.advance(0.05);
    stopCompositor();
    EXPECT_TRUE(awaitCoverage(0.97, 1.1)) << seen().name().toStdString();
    clock.advance(0.5);
    startCompositor();
    EXPECT_TRUE(awaitCoverage(0.9, 1.0)) << seen().name().toStdString();
    clock.advance(3);
    EXPECT_TRUE(awaitGround());
    stopCompositor();
    flash.flash();
    EXPECT_TRUE(awaitCoverage(0.97, 1.1)) << seen().name().toStdString();
    startCompositor();
    EXPECT_TRUE(awaitCoverage(0.9, 1.0)) << seen().name().toStdString();
}

TEST_F(LaunchFlashTest, LeavesClicksAndTheFocusToOthers) {
    VirtualDesktop& desktop = WindowDesktop::get();
    const std::uint64_t focused = desktop.focusedWindow();
    flash.flash();
    ASSERT_TRUE(awaitCoverage(0.97, 1.1));
    const QPoint middle = flash.panel()->geometry().center();
    desktop.click(middle.x(), middle.y());
    clock.advance(1);
    EXPECT_TRUE(awaitCoverage(0.97, 1.1));
    EXPECT_EQ(desktop.focusedWindow(), focused);
    desktop.movePointer(10, 700);
}

}  // namespace

}  // namespace velmora::test
