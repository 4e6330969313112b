// SPDX-License-Identifier: MIT
#include "Velmora/Presentation/PacedWindow.h"

#include <gtest/gtest.h>

#include <QSignalSpy>
#include <QTest>

#include "Tests/Views/FakeAppearance.h"
#include "Tests/Views/FakeCompositor.h"

namespace velmora::test {

namespace {

class PacedWindowTest : public ::testing::Test {
  protected:
    PacedWindowTest() { window.setGeometry(10, 10, 120, 80); }

    bool isAsked() {
        return QTest::qWaitFor([&] { return compositor.heldAnswers() == 1U; });
    }

    FakeAppearance appearance;
    FakeCompositor compositor;
    Theme theme{appearance, compositor};
    PacedWindow window{theme};
    QSignalSpy frames{&window, &QQuickWindow::frameSwapped};
};

TEST_F(PacedWindowTest, ItsFirstFrameComesWhenTheDisplayAnswers) {
    compositor.holdAnswers();
    window.show();
    ASSERT_TRUE(isAsked());
    EXPECT_TRUE(window.isExposed());
    EXPECT_EQ(frames.count(), 0);
    compositor.giveAnswers();
    EXPECT_EQ(frames.count(), 1);
}

TEST_F(PacedWindowTest, SoDoesEveryLaterOneAndOnce) {
    window.show();
    ASSERT_TRUE(QTest::qWaitFor([&] { return frames.count() > 0; }));
    QCoreApplication::processEvents();
    frames.clear();
    compositor.holdAnswers();
    window.setColor(Qt::red);
    window.update();
    ASSERT_TRUE(isAsked());
    window.update();
    QTest::qWait(0);
    EXPECT_EQ(compositor.heldAnswers(), 1U);
    EXPECT_EQ(frames.count(), 0);
    compositor.giveAnswers();
    EXPECT_EQ(frames.count(), 1);
}

TEST_F(PacedWindowTest, NothingIsPaintedOnceItIsHidden) {
    compositor.holdAnswers();
    window.show();
    ASSERT_TRUE(isAsked());
    window.hide();
    compositor.giveAnswers();
    EXPECT_EQ(frames.count(), 0);
}

}  // namespace

}  // namespace velmora::test
