// SPDX-License-Identifier: MIT
#include "Velmora/Presentation/HighlightOverlayController.h"

#include <QTest>

#include "Tests/Views/ViewTest.h"

namespace velmora::test {

namespace {

class HighlightOverlayControllerTest : public ViewTest {
  protected:
    HighlightOverlayController highlight{screens, theme};
};

// Translucent without a compositor it would be a black box over the text.
TEST_F(HighlightOverlayControllerTest, FollowsACompositorThatGoesBeforeItHasCome) {
    compositor.holdAnswers();
    highlight.show(anchor);
    EXPECT_TRUE(highlight.panel()->mask().isEmpty());
    compositor.set(false);
    EXPECT_FALSE(highlight.panel()->isVisible());
    EXPECT_FALSE(highlight.panel()->mask().isEmpty());
    compositor.set(true);
    EXPECT_TRUE(highlight.panel()->mask().isEmpty());
    ASSERT_TRUE(QTest::qWaitFor([&] { return compositor.heldAnswers() > 0; }));
    compositor.set(false);
    compositor.giveAnswers();
    EXPECT_TRUE(highlight.panel()->isVisible());
    EXPECT_FALSE(highlight.panel()->mask().isEmpty());
}

TEST_F(HighlightOverlayControllerTest, FollowsNothingOnceItIsOrderedOut) {
    highlight.show(anchor);
    highlight.orderOut();
    compositor.set(false);
    EXPECT_TRUE(highlight.panel()->mask().isEmpty());
    EXPECT_FALSE(highlight.panel()->isVisible());
    // What it missed it learns with the next word.
    highlight.show(anchor);
    EXPECT_FALSE(highlight.panel()->mask().isEmpty());
}

}  // namespace

}  // namespace velmora::test
