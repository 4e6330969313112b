// SPDX-License-Identifier: MIT
#include "Velmora/Platform/Recognition/LineImage.h"

#include <gtest/gtest.h>

#include "Tests/Velmora/Recognition/Drawing.h"
#include "Velmora/Platform/Recognition/OutlinedText.h"

namespace velmora {
namespace {

TEST(LineImage, IsBlackOnWhiteWithFullContrastWhateverTheColours) {
    for (const bool dark : {false, true}) {
        GrayImage picture(200, 60, dark ? 40 : 200);
        drawLine(picture, 20, 20, 20, 6, dark ? 140 : 100);
        const LineImage line = prepareLine(picture, {20, 20, 138, 40}, 40);
        EXPECT_EQ(line.wasLightOnDark, dark);
        EXPECT_EQ(line.image.height(), LineImage::height);
        EXPECT_EQ(line.image.at(2, 24), 255);
        int darkest = 255;
        for (int x = 0; x < line.image.width(); ++x) {
            darkest = std::min<int>(darkest, line.image.at(x, 24));
        }
        EXPECT_LT(darkest, 30);
    }
}

TEST(LineImage, LeadsBackToTheColumnsOfThePicture) {
    GrayImage picture(300, 60, 255);
    drawLine(picture, 100, 20, 16, 4, 0);
    const LineImage line = prepareLine(picture, {100, 20, 162, 36}, 32);
    int first = 0;
    while (line.image.at(first, 24) > 128) {
        ++first;
    }
    EXPECT_NEAR(line.sourceX(first), 100, 1.5);
}

TEST(LineImage, GoesWhiteBeyondTheEdgesOfThePicture) {
    GrayImage picture(80, 20, 255);
    drawLine(picture, 0, 0, 20, 4, 0);
    const LineImage line = prepareLine(picture, {0, 0, 80, 20}, 33);
    ASSERT_FALSE(line.image.isEmpty());
    EXPECT_EQ(line.image.at(line.image.width() / 2, 0), 255);
    EXPECT_TRUE(prepareLine(picture, {200, 0, 240, 20}, 33).image.isEmpty());
    EXPECT_TRUE(cutBlackOnWhite(picture, {0, 50, 10, 60}, {0, 0, 80, 20}).isEmpty());
}

TEST(LineImage, ADenseCharacterKeepsThePolarityOfItsLine) {
    GrayImage picture(100, 40, 255);
    fill(picture, {40, 10, 60, 30}, 0);
    fill(picture, {45, 15, 48, 18}, 255);
    const GrayImage cut = cutBlackOnWhite(picture, {40, 10, 60, 30}, {20, 10, 80, 30});
    EXPECT_EQ(cut.at(1, 1), 0);
    EXPECT_EQ(cut.at(6, 6), 255);
}

TEST(GrayImage, ScalesDownByMeansAndUpByInterpolation) {
    GrayImage image(4, 2, 0);
    fill(image, {2, 0, 4, 2}, 200);
    const GrayImage half = scaled(image, 0.5);
    ASSERT_EQ(half.width(), 2);
    EXPECT_EQ(half.at(0, 0), 0);
    EXPECT_EQ(half.at(1, 0), 200);
    const GrayImage twice = scaled(image, 2);
    ASSERT_EQ(twice.width(), 8);
    EXPECT_EQ(twice.at(0, 0), 0);
    EXPECT_EQ(twice.at(7, 3), 200);
    EXPECT_GT(twice.at(4, 1), twice.at(3, 1));
    EXPECT_EQ(scaled(GrayImage(1, 1, 9), 0.01).width(), 1);
}

Image colourPicture(int width, int height, std::uint32_t background) {
    std::vector<std::uint32_t> pixels(
        static_cast<std::size_t>(width) * static_cast<std::size_t>(height), background);
    const auto put = [&](int left, int top, int right, int bottom, std::uint32_t colour) {
        for (int y = top; y < bottom; ++y) {
            for (int x = left; x < right; ++x) {
                pixels[static_cast<std::size_t>(y) * static_cast<std::size_t>(width) +
                       static_cast<std::size_t>(x)] = colour;
            }
        }
    };
    put(18, 18, 62, 26, 0xFF000000);  // A long bar with its outline, and its yellow core.
    put(20, 20, 60, 24, 0xFFFFF050);
    return {width, height, std::move(pixels)};
}

TEST(OutlinedText, KeepsTheBrightCoreAndDropsThePictureBehind) {
    const GrayImage core = outlinedTextCore(colourPicture(80, 40, 0xFFB0B0B0), {0, 0, 80, 40});
    EXPECT_LT(core.at(40, 22), 40);   // Far from both ends of the bar.
    EXPECT_EQ(core.at(40, 18), 255);  // The outline.
    EXPECT_EQ(core.at(10, 10), 255);  // The picture.
    EXPECT_EQ(core.at(70, 30), 255);
}

}  // namespace
}  // namespace velmora
