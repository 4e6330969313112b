// SPDX-License-Identifier: MIT
#include "Velmora/Platform/Recognition/LineFinder.h"

#include <gtest/gtest.h>

#include <random>

#include "Tests/Velmora/Recognition/Drawing.h"
#include "Velmora/Platform/Recognition/Clutter.h"
#include "Velmora/Platform/Recognition/InkComponents.h"

namespace velmora {
namespace {

TEST(LineFinder, FindsEachLineWithTheBoxOfItsInk) {
    GrayImage image(400, 120, 255);
    drawLine(image, 20, 10, 20, 10, 0);
    drawLine(image, 40, 70, 20, 5, 0);
    const FoundLines found = findLines(image);
    ASSERT_EQ(found.lines.size(), 2U);
    EXPECT_EQ(found.lines[0].box, (PixelBox{20, 10, 218, 30}));
    EXPECT_EQ(found.lines[1].box, (PixelBox{40, 70, 138, 90}));
}

TEST(LineFinder, FindsLightWritingOnDarkPanelsBesideDarkOnLight) {
    GrayImage image(400, 200, 250);
    fill(image, {0, 100, 400, 200}, 30);
    drawLine(image, 30, 40, 24, 6, 20);
    drawLine(image, 30, 140, 24, 6, 230);
    const FoundLines found = findLines(image);
    ASSERT_EQ(found.lines.size(), 2U);
    EXPECT_EQ(found.lines[0].box.top, 40);
    EXPECT_EQ(found.lines[1].box.top, 140);
}

TEST(LineFinder, KeepsCharactersOfSeparatePartsWhole) {
    GrayImage image(200, 60, 255);
    for (int i = 0; i < 3; ++i) {  // A roof over a box, as in 宫.
        fill(image, {20 + 24 * i, 10, 38 + 24 * i, 13}, 0);
        drawFrame(image, {18 + 24 * i, 15, 40 + 24 * i, 32}, 2, 0);
    }
    const FoundLines found = findLines(image);
    ASSERT_EQ(found.lines.size(), 1U);
    EXPECT_EQ(found.lines[0].box, (PixelBox{18, 10, 88, 32}));
}

TEST(LineFinder, DropsFramesAroundLabels) {
    GrayImage image(300, 80, 255);
    drawFrame(image, {20, 15, 160, 60}, 1, 120);
    drawLine(image, 40, 28, 20, 5, 0);
    const FoundLines found = findLines(image);
    ASSERT_EQ(found.lines.size(), 1U);
    EXPECT_EQ(found.lines[0].box, (PixelBox{40, 28, 138, 48}));
    EXPECT_EQ(found.image.at(90, 15), 255);
}

TEST(LineFinder, DropsSmallFramesWhoseSidesLieOnEachOther) {
    GrayImage image(300, 120, 255);
    for (const PixelBox& box : {PixelBox{20, 20, 60, 42}, PixelBox{40, 41, 80, 63}}) {
        fill(image, box, 235);
        drawFrame(image, box, 1, 150);
    }
    fill(image, {40, 41, 60, 42}, 100);  // Where one is drawn over the other it is darker.
    drawLine(image, 28, 25, 12, 2, 0);
    drawLine(image, 48, 46, 12, 2, 0);
    GrayImage plain = image;
    InkMask ink = findInk(plain);
    ASSERT_TRUE(ink.at(50, 41));
    removeRules(plain, ink);
    for (const int x : {30, 50, 70}) {
        EXPECT_FALSE(ink.at(x, 41)) << x;
    }
    const FoundLines found = findLines(image);
    ASSERT_EQ(found.lines.size(), 2U);
    EXPECT_EQ(found.lines[0].box, (PixelBox{28, 25, 50, 37}));
    EXPECT_EQ(found.lines[1].box, (PixelBox{48, 46, 70, 58}));
}

TEST(LineFinder, DropsFramesThatLieCloseTogether) {
    GrayImage image(300, 120, 255);
    for (const PixelBox& box : {PixelBox{20, 20, 90, 44}, PixelBox{40, 46, 110, 70}}) {
        fill(image, box, 235);
        drawFrame(image, box, 1, 150);
    }
    drawLine(image, 30, 26, 12, 4, 0);
    drawLine(image, 50, 52, 12, 4, 0);
    const FoundLines found = findLines(image);
    ASSERT_EQ(found.lines.size(), 2U);
    EXPECT_EQ(found.lines[0].box, (PixelBox{30, 26, 76, 38}));
    EXPECT_EQ(found.lines[1].box, (PixelBox{50, 52, 96, 64}));
    EXPECT_EQ(found.image.at(100, 46), 255) << "painted with what lies between or beyond";
}

TEST(LineFinder, DropsSmallFramesAroundTwoCharacters) {
    GrayImage image(200, 60, 255);
    fill(image, {20, 15, 60, 37}, 240);
    drawFrame(image, {20, 15, 60, 37}, 1, 220);  // Top and bottom are too faint for ink.
    fill(image, {20, 15, 21, 37}, 110);
    fill(image, {59, 15, 60, 37}, 110);
    drawLine(image, 28, 20, 12, 2, 0);
    const FoundLines found = findLines(image);
    ASSERT_EQ(found.lines.size(), 1U);
    EXPECT_EQ(found.lines[0].box, (PixelBox{28, 20, 50, 32}));
}

TEST(LineFinder, KeepsLargeCharactersThatAreFrames) {
    GrayImage image(200, 80, 255);
    drawFrame(image, {20, 20, 56, 54}, 2, 0);  // As 口 in a thin font.
    drawCharacter(image, 64, 18, 38, 0);
    const FoundLines found = findLines(image);
    ASSERT_EQ(found.lines.size(), 1U);
    EXPECT_EQ(found.lines[0].box, (PixelBox{20, 18, 100, 56}));
}

TEST(LineFinder, KeepsSmallCharactersOfManyStrokes) {
    GrayImage image(200, 50, 255);
    drawLine(image, 40, 20, 12, 4, 0);
    for (int row = 0; row < 12; ++row) {  // Strokes a pixel apart, and none of it is paper.
        fill(image, {26, 20 + row, 38, 21 + row}, row % 2 == 0 ? 0 : 90);
    }
    const FoundLines found = findLines(image);
    ASSERT_EQ(found.lines.size(), 1U);
    EXPECT_EQ(found.lines[0].box.left, 26);
}

TEST(LineFinder, DropsLargeIconsThatHaveAPattern) {
    GrayImage image(300, 70, 255);
    drawLine(image, 60, 20, 30, 4, 0);
    for (int row = 0; row < 30; ++row) {
        fill(image, {20, 20 + row, 50, 21 + row}, row % 2 == 0 ? 0 : 90);
    }
    const FoundLines found = findLines(image);
    ASSERT_EQ(found.lines.size(), 1U);
    EXPECT_EQ(found.lines[0].box.left, 60);
}

TEST(LineFinder, DropsSmallIcons) {
    GrayImage image(200, 50, 255);
    drawLine(image, 40, 20, 12, 4, 0);
    fill(image, {26, 20, 38, 32}, 90);
    const FoundLines found = findLines(image);
    ASSERT_EQ(found.lines.size(), 1U);
    EXPECT_EQ(found.lines[0].box.left, 40);
}

TEST(LineFinder, DropsFramesThatTouchEachOther) {
    GrayImage image(300, 110, 255);
    drawFrame(image, {20, 10, 160, 50}, 2, 100);
    drawFrame(image, {60, 54, 200, 94}, 2, 100);
    drawLine(image, 40, 20, 20, 5, 0);
    drawLine(image, 80, 64, 20, 5, 0);
    const FoundLines found = findLines(image);
    ASSERT_EQ(found.lines.size(), 2U);
    EXPECT_EQ(found.lines[0].box, (PixelBox{40, 20, 138, 40}));
    EXPECT_EQ(found.lines[1].box, (PixelBox{80, 64, 178, 84}));
}

TEST(LineFinder, DropsUnderlines) {
    GrayImage image(300, 80, 255);
    drawLine(image, 40, 20, 20, 6, 0);
    fill(image, {38, 44, 162, 46}, 0);
    const FoundLines found = findLines(image);
    ASSERT_EQ(found.lines.size(), 1U);
    EXPECT_EQ(found.lines[0].box.bottom, 40);
}

TEST(LineFinder, DropsSolidIconsBesideLabels) {
    GrayImage image(300, 60, 255);
    fill(image, {20, 20, 40, 40}, 90);
    drawLine(image, 48, 20, 20, 4, 0);
    const FoundLines found = findLines(image);
    ASSERT_EQ(found.lines.size(), 1U);
    EXPECT_EQ(found.lines[0].box.left, 48);
}

TEST(LineFinder, FaintFramesDoNotCountAsInkBesideStrongWriting) {
    GrayImage image(200, 60, 30);
    drawFrame(image, {20, 10, 130, 50}, 2, 75);
    drawLine(image, 30, 20, 20, 4, 220);
    const FoundLines found = findLines(image);
    ASSERT_EQ(found.lines.size(), 1U);
    EXPECT_EQ(found.lines[0].box, (PixelBox{30, 20, 108, 40}));
}

TEST(LineFinder, AnswersNothingForEmptyAndTinyPictures) {
    EXPECT_TRUE(findLines(GrayImage()).lines.empty());
    EXPECT_TRUE(findLines(GrayImage(1, 1, 0)).lines.empty());
    EXPECT_TRUE(findLines(GrayImage(3, 400, 200)).lines.empty());
}

TEST(LineFinder, StaysBoundedOnNoise) {
    GrayImage image(1600, 400, 255);
    std::mt19937 random(7);
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            image.at(x, y) = random() % 4 == 0 ? 0 : 255;
        }
    }
    EXPECT_LE(findLines(image).lines.size(), 1200U);
}

TEST(InkComponents, JoinsDiagonalNeighboursAndSpirals) {
    InkMask mask(12, 8);
    mask.set(1, 1, true);
    mask.set(2, 2, true);
    for (int x = 5; x < 11; ++x) {  // A U that closes only in its last row.
        mask.set(x, 6, true);
    }
    for (int y = 1; y < 7; ++y) {
        mask.set(5, y, true);
        mask.set(10, y, true);
    }
    const std::vector<PixelBox> boxes = inkComponents(mask);
    ASSERT_EQ(boxes.size(), 2U);
    EXPECT_EQ(boxes[0], (PixelBox{1, 1, 3, 3}));
    EXPECT_EQ(boxes[1], (PixelBox{5, 1, 11, 7}));
}

TEST(InkMask, TellsPlainSurfacesFromPictures) {
    GrayImage plain(120, 80, 240);
    drawLine(plain, 10, 20, 20, 5, 0);
    GrayImage picture(120, 80, 0);
    for (int y = 0; y < 80; ++y) {
        for (int x = 0; x < 120; ++x) {
            picture.at(x, y) = static_cast<std::uint8_t>((x * 2 + y * 3) % 256);
        }
    }
    EXPECT_GT(backgroundFlatness(plain, plain.bounds()), 0.6);
    EXPECT_LT(backgroundFlatness(picture, picture.bounds()), 0.3);
    EXPECT_EQ(backgroundFlatness(plain, {500, 500, 600, 600}), 1);
}

TEST(InkMask, TellsTheEdgeOfAWindowFromAPicture) {
    GrayImage edge(120, 80, 240);
    for (int y = 0; y < 80; ++y) {
        std::fill(edge.row(y), edge.row(y) + 55, std::uint8_t{0});
    }
    drawLine(edge, 60, 20, 20, 2, 0);
    GrayImage picture(120, 80, 0);
    for (int y = 0; y < 80; ++y) {
        for (int x = 0; x < 120; ++x) {
            picture.at(x, y) = static_cast<std::uint8_t>((x * 2 + y * 3) % 256);
        }
    }
    EXPECT_LT(backgroundFlatness(edge, edge.bounds()), 0.7);
    EXPECT_GT(flatnessOfTwoSurfaces(edge, edge.bounds()), 0.95);
    EXPECT_LT(flatnessOfTwoSurfaces(picture, picture.bounds()), 0.3);
    EXPECT_EQ(flatnessOfTwoSurfaces(edge, {500, 500, 600, 600}), 1);
}

}  // namespace
}  // namespace velmora
