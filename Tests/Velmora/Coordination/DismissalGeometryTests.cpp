// SPDX-License-Identifier: MIT
#include "Velmora/Coordination/DismissalGeometry.h"

#include <gtest/gtest.h>

namespace velmora {
namespace {

const Rect word{100, 500, 40, 20};
const Rect panelBelow{80, 290, 360, 200};

LookupPresentation showing(LookupPresentationMode mode) {
    return {{}, std::nullopt, word, mode};
}

TEST(ActiveLookupArea, IsTheWordGrownBy18) {
    const auto pinyin = showing(LookupPresentationMode::pinyin);
    EXPECT_TRUE(isInsideActiveLookupArea({120, 510}, pinyin, std::nullopt));
    EXPECT_TRUE(isInsideActiveLookupArea({82, 482}, pinyin, std::nullopt));
    EXPECT_FALSE(isInsideActiveLookupArea({81.9, 510}, pinyin, std::nullopt));
    EXPECT_TRUE(isInsideActiveLookupArea({157.9, 537.9}, pinyin, std::nullopt));
    EXPECT_FALSE(isInsideActiveLookupArea({158, 510}, pinyin, std::nullopt));
    EXPECT_FALSE(isInsideActiveLookupArea({120, 538}, pinyin, std::nullopt));
}

TEST(ActiveLookupArea, OfPinyinDoesNotReachToItsPanel) {
    const Rect bubble{90, 536, 60, 32};
    const auto pinyin = showing(LookupPresentationMode::pinyin);
    EXPECT_FALSE(isInsideActiveLookupArea({120, 550}, pinyin, bubble));
}

TEST(ActiveLookupArea, OfTheDictionaryHoldsPanelAndCorridor) {
    const auto dictionary = showing(LookupPresentationMode::dictionary);
    EXPECT_TRUE(isInsideActiveLookupArea({300, 300}, dictionary, panelBelow));
    EXPECT_TRUE(isInsideActiveLookupArea({62, 272}, dictionary, panelBelow));
    EXPECT_FALSE(isInsideActiveLookupArea({61.9, 300}, dictionary, panelBelow));
    // Beside the word, above the panel: within the union of both.
    EXPECT_TRUE(isInsideActiveLookupArea({440, 530}, dictionary, panelBelow));
    EXPECT_FALSE(isInsideActiveLookupArea({440, 538.1}, dictionary, panelBelow));
}

TEST(ActiveLookupArea, WithoutAVisiblePanelIsTheWordAlone) {
    const auto dictionary = showing(LookupPresentationMode::dictionary);
    EXPECT_FALSE(isInsideActiveLookupArea({300, 300}, dictionary, std::nullopt));
    EXPECT_TRUE(isInsideActiveLookupArea({120, 510}, dictionary, std::nullopt));
}

TEST(Panel, HasAMarginOfSixPoints) {
    EXPECT_TRUE(isOnPanel({74, 284}, panelBelow));
    EXPECT_FALSE(isOnPanel({73.9, 300}, panelBelow));
    EXPECT_TRUE(isOnPanel({445.9, 495.9}, panelBelow));
    EXPECT_FALSE(isOnPanel({446, 300}, panelBelow));
}

TEST(MenuBar, IsTheTop40PointsOfEveryScreen) {
    const std::vector<Screen> screens{{{0, 0, 1000, 800}, {}}, {{1000, 300, 500, 700}, {}}};
    EXPECT_TRUE(isMenuBarPoint({10, 760}, screens));
    EXPECT_FALSE(isMenuBarPoint({10, 759.9}, screens));
    EXPECT_TRUE(isMenuBarPoint({10, 799.9}, screens));
    EXPECT_TRUE(isMenuBarPoint({1200, 960}, screens));
    EXPECT_FALSE(isMenuBarPoint({1200, 800}, screens));
}

TEST(MenuBar, HoldsTheTopmostRowOfPixels) {
    const std::vector<Screen> screens{{{0, 0, 1000, 800}, {}}};
    EXPECT_TRUE(isMenuBarPoint({10, 800}, screens));
    EXPECT_FALSE(isMenuBarPoint({1000, 800}, screens));
    EXPECT_FALSE(isMenuBarPoint({10, 800.1}, screens));
}

TEST(MenuBar, IsNowhereOutsideTheScreens) {
    EXPECT_FALSE(isMenuBarPoint({10, 790}, {}));
    EXPECT_FALSE(isMenuBarPoint({-1, 790}, {{{0, 0, 1000, 800}, {}}}));
}

TEST(MenuBar, GoesByTheFirstScreenThatHoldsThePoint) {
    // Mirrored screens of different heights.
    const std::vector<Screen> screens{{{0, 0, 1000, 1000}, {}}, {{0, 0, 1000, 800}, {}}};
    EXPECT_FALSE(isMenuBarPoint({10, 790}, screens));
}

}  // namespace
}  // namespace velmora
