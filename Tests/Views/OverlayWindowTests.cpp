// SPDX-License-Identifier: MIT
#include "Velmora/Presentation/OverlayWindow.h"

#include <gtest/gtest.h>

#include <QTest>

#include "Tests/Views/FakeAppearance.h"
#include "Tests/Views/FakeCompositor.h"

namespace velmora::test {

namespace {

class CountingOverlay : public OverlayWindow {
  public:
    explicit CountingOverlay(const Theme& theme) : OverlayWindow(theme) {
        setGeometry(10, 10, 40, 20);
    }
    int paintings = 0;

  protected:
    void paintEvent(QPaintEvent*) override { ++paintings; }
};

class OverlayWindowTest : public ::testing::Test {
  protected:
    FakeAppearance appearance;
    FakeCompositor compositor;
    Theme theme{appearance, compositor};
    CountingOverlay overlay{theme};
};

TEST_F(OverlayWindowTest, ComesWhenTheDisplayAnswers) {
    compositor.holdAnswers();
    overlay.orderFront();
    EXPECT_FALSE(overlay.isVisible());
    EXPECT_TRUE(QTest::qWaitFor([&] { return compositor.heldAnswers() == 1U; }));
    EXPECT_FALSE(overlay.isVisible());
    compositor.giveAnswers();
    EXPECT_TRUE(overlay.isVisible());
}

TEST_F(OverlayWindowTest, IsPaintedOnceWhenTheDisplayAnswers) {
    overlay.orderFront();
    ASSERT_TRUE(QTest::qWaitFor([&] { return overlay.paintings > 0; }));
    compositor.holdAnswers();
    overlay.paintings = 0;
    overlay.update();
    ASSERT_TRUE(QTest::qWaitFor([&] { return compositor.heldAnswers() == 1U; }));
    overlay.update();
    QCoreApplication::processEvents();
    EXPECT_EQ(compositor.heldAnswers(), 1U);
    EXPECT_EQ(overlay.paintings, 0);
    compositor.giveAnswers();
    EXPECT_EQ(overlay.paintings, 1);
}

TEST_F(OverlayWindowTest, NeverComesOnceItIsOrderedOut) {
    compositor.holdAnswers();
    overlay.orderFront();
    ASSERT_TRUE(QTest::qWaitFor([&] { return compositor.heldAnswers() == 1U; }));
    overlay.orderOut();
    compositor.giveAnswers();
    EXPECT_FALSE(overlay.isVisible());
}

TEST_F(OverlayWindowTest, IsNotAskedForOnceItIsOrderedOutAtOnce) {
    compositor.holdAnswers();
    overlay.orderFront();
    overlay.orderOut();
    CountingOverlay later(theme);
    later.orderFront();
    ASSERT_TRUE(QTest::qWaitFor([&] { return compositor.heldAnswers() > 0; }));
    EXPECT_EQ(compositor.heldAnswers(), 1U);
    compositor.giveAnswers();
    EXPECT_FALSE(overlay.isVisible());
    EXPECT_TRUE(later.isVisible());
}

TEST_F(OverlayWindowTest, MayGoWhileTheDisplayIsAsked) {
    compositor.holdAnswers();
    {
        CountingOverlay gone(theme);
        gone.orderFront();
        ASSERT_TRUE(QTest::qWaitFor([&] { return compositor.heldAnswers() == 1U; }));
    }
    compositor.giveAnswers();
}

}  // namespace

}  // namespace velmora::test
