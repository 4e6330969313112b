// SPDX-License-Identifier: MIT
#include "Velmora/Platform/Recognition/InkCorrelation.h"

#include <gtest/gtest.h>

#include "Tests/Velmora/Recognition/Drawing.h"

namespace velmora {
namespace {

GrayImage cellWith(int left, int top) {
    GrayImage image(32, 32, 255);
    drawCharacter(image, left, top, 20, 0);
    return image;
}

GrayImage drawing() {
    GrayImage image(20, 20, 255);
    drawCharacter(image, 0, 0, 20, 0);
    return image;
}

TEST(InkCorrelation, IsOneForTheSameWhereverItStands) {
    for (const int place : {0, 3, 6, 11}) {
        EXPECT_NEAR(InkCorrelation(cellWith(place, 11 - place)).with(drawing()), 1, 0.001);
    }
}

TEST(InkCorrelation, IsSmallerForAnythingElse) {
    GrayImage other = drawing();
    fill(other, {0, 9, 9, 12}, 255);
    const InkCorrelation cell(cellWith(6, 6));
    EXPECT_LT(cell.with(other), 0.97F);
    GrayImage frame(20, 20, 255);
    drawFrame(frame, {0, 0, 20, 20}, 3, 0);
    EXPECT_LT(cell.with(frame), 0.7F);
}

TEST(InkCorrelation, ForeignInkInTheCellCounts) {
    GrayImage cell = cellWith(6, 6);
    fill(cell, {28, 0, 32, 32}, 0);
    EXPECT_LT(InkCorrelation(cell).with(drawing()), 0.9F);
}

TEST(InkCorrelation, NothingIsLikeNothing) {
    EXPECT_EQ(InkCorrelation(GrayImage(10, 10, 255)).with(drawing()), 0);
    EXPECT_EQ(InkCorrelation(cellWith(0, 0)).with(GrayImage(5, 5, 255)), 0);
    EXPECT_EQ(InkCorrelation(GrayImage()).with(drawing()), 0);
    EXPECT_EQ(InkCorrelation(cellWith(0, 0)).with(GrayImage()), 0);
}

TEST(InkCorrelation, TakesDrawingsThatAreLargerThanTheCell) {
    GrayImage large(100, 100, 255);
    drawCharacter(large, 0, 0, 100, 0);
    const float value = InkCorrelation(cellWith(6, 6)).with(large);
    EXPECT_GE(value, 0);
    EXPECT_LT(value, 0.6F);
}

}  // namespace
}  // namespace velmora
