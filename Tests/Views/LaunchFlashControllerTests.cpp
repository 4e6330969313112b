// SPDX-License-Identifier: MIT
#include <QGuiApplication>
#include <QPointF>

#include "Tests/Views/WindowTest.h"

namespace velmora::test {

namespace {

/// Where the cubic Bézier curve with these control points is at x on its way from (0, 0) to (1, 1).
double bezier(QPointF first, QPointF second, double x) {
    const auto at = [](double one, double two, double t) {
        return 3 * (1 - t) * (1 - t) * t * one + 3 * (1 - t) * t * t * two + t * t * t;
    };
    double low = 0;
    double high = 1;
    for (int i = 0; i < 60; ++i) {
        const double middle = (low + high) / 2;
        (at(first.x(), second.x(), middle) < x ? low : high) = middle;
    }
    return at(first.y(), second.y(), low);
}

class LaunchFlashControllerTest : public WindowTest {
  protected:
    double alpha() const { return flash.panel()->alpha(); }
    bool isVisible() const { return flash.panel()->isVisible(); }
};

TEST_F(LaunchFlashControllerTest, HasNoPanelBeforeTheFirstFlash) {
    EXPECT_EQ(flash.panel(), nullptr);
}

TEST_F(LaunchFlashControllerTest, FadesInStaysAndFadesOut) {
    flash.flash();
    EXPECT_TRUE(isVisible());
    EXPECT_EQ(alpha(), 0);
    world.clock.advance(0.11);
    // The sixth step of a sixtieth of a second each.
    EXPECT_NEAR(alpha(), bezier({0, 0}, {0.58, 1}, 0.1 / 0.22), 1e-3);
    world.clock.advance(0.12);
    EXPECT_EQ(alpha(), 1);
    world.clock.advance(1.36);
    EXPECT_EQ(alpha(), 1);
    world.clock.advance(0.2);
    EXPECT_NEAR(alpha(), 1 - bezier({0.42, 0}, {1, 1}, 11.0 / 60 / 0.4), 1e-3);
    EXPECT_TRUE(isVisible());
    world.clock.advance(0.22);
    EXPECT_EQ(alpha(), 0);
    EXPECT_FALSE(isVisible());
    EXPECT_EQ(world.clock.pendingTimers(), 0U);
}

TEST_F(LaunchFlashControllerTest, ASecondFlashStaysItsWholeTime) {
    flash.flash();
    const PanelWindow* first = flash.panel();
    world.clock.advance(1.5);
    flash.flash();
    EXPECT_EQ(flash.panel(), first);
    world.clock.advance(1.55);
    EXPECT_EQ(alpha(), 1);
    world.clock.advance(0.5);
    EXPECT_FALSE(isVisible());
}

TEST_F(LaunchFlashControllerTest, AFlashDuringTheFadeOutBeginsAnew) {
    flash.flash();
    world.clock.advance(1.8);
    ASSERT_LT(alpha(), 1);
    flash.flash();
    world.clock.advance(0.5);
    EXPECT_EQ(alpha(), 1);
    EXPECT_TRUE(isVisible());
    world.clock.advance(1.6);
    EXPECT_FALSE(isVisible());
}

TEST_F(LaunchFlashControllerTest, WithoutACompositorItComesAndGoesAtOnce) {
    compositor.set(false);
    flash.flash();
    EXPECT_TRUE(isVisible());
    EXPECT_EQ(alpha(), 1);
    world.clock.advance(1.59);
    EXPECT_TRUE(isVisible());
    world.clock.advance(0.02);
    EXPECT_FALSE(isVisible());
}

TEST_F(LaunchFlashControllerTest, IsWholeOnceItIsThereWhateverTheCompositorDoes) {
    flash.flash();
    world.clock.advance(0.1);
    EXPECT_LT(flash.panel()->opacity(), 1);
    compositor.set(false);
    EXPECT_EQ(flash.panel()->opacity(), 1);
    world.clock.advance(0.5);
    compositor.set(true);
    EXPECT_EQ(flash.panel()->opacity(), 1);
    world.clock.advance(2);
    EXPECT_FALSE(isVisible());
    // It faded out under a compositor, which is gone when it comes again.
    compositor.set(false);
    flash.flash();
    EXPECT_EQ(flash.panel()->opacity(), 1);
    compositor.set(true);
    EXPECT_EQ(flash.panel()->opacity(), 1);
    EXPECT_EQ(flash.panel()->shadow()->opacity(), 1);
}

TEST_F(LaunchFlashControllerTest, StandsUnderTheUpperEdgeOfThePrimaryScreensVisibleFrame) {
    const double ratio = qGuiApp->devicePixelRatio();
    screens.set({{1,
                  {0, 0, 1600 * ratio, 1000 * ratio},
                  ratio,
                  {100 * ratio, 30 * ratio, 1500 * ratio, 970 * ratio}},
                 {2, {1600 * ratio, 0, 800 * ratio, 600 * ratio}, ratio, {}}});
    flash.flash();
    const QRect frame = flash.panel()->geometry();
    EXPECT_EQ(frame.y(), 30 + 24);
    EXPECT_NEAR(frame.x() + frame.width() / 2.0, 850, 0.5);
}

TEST_F(LaunchFlashControllerTest, WithoutAScreenItStaysWhereItWas) {
    flash.flash();
    const QRect before = flash.panel()->geometry();
    screens.set({});
    flash.flash();
    EXPECT_EQ(flash.panel()->geometry(), before);
}

TEST_F(LaunchFlashControllerTest, LetsClicksThroughAndNeverHasTheFocus) {
    flash.flash();
    const Qt::WindowFlags flags = flash.panel()->flags();
    EXPECT_TRUE(flags.testFlag(Qt::WindowTransparentForInput));
    EXPECT_TRUE(flags.testFlag(Qt::WindowDoesNotAcceptFocus));
    EXPECT_TRUE(flags.testFlag(Qt::WindowStaysOnTopHint));
    EXPECT_TRUE(world.journal.empty());
}

TEST_F(LaunchFlashControllerTest, LaysOutMarkNameAndNote) {
    flash.flash();
    QQuickItem& view = *flash.panel()->view();
    EXPECT_EQ(view.property("cornerRadius").toDouble(), 20);
    QQuickItem& mark = named(view, QStringLiteral("mark"));
    EXPECT_EQ(mark.property("text").toString(), QStringLiteral("知道"));
    EXPECT_NEAR(mark.property("font").value<QFont>().pointSizeF() * 96 / 72, 32, 1e-9);
    EXPECT_EQ(mark.mapToItem(&view, {}).x(), 22);
    QQuickItem& name = named(view, QStringLiteral("name"));
    QQuickItem& note = named(view, QStringLiteral("note"));
    EXPECT_EQ(name.property("text").toString(), QStringLiteral("Velmora"));
    EXPECT_EQ(note.property("text").toString(), QStringLiteral("Running in your menu bar"));
    EXPECT_EQ(name.mapToItem(&view, {}).x(), 22 + mark.width() + 14);
    EXPECT_EQ(note.y(), name.y() + name.height() + 2);
    EXPECT_NEAR(view.implicitHeight(), mark.height() + 32, 1);
}

}  // namespace

}  // namespace velmora::test
