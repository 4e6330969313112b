// SPDX-License-Identifier: MIT
#include "Velmora/TextCapture/ImageEnhancement.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <vector>

namespace velmora {
namespace {

Image plain(int width, int height, std::uint32_t colour) {
    return {width, height,
            std::vector<std::uint32_t>(
                static_cast<std::size_t>(width) * static_cast<std::size_t>(height), colour)};
}

TEST(UpscaledImage, IsTheSameForFactorsUpToOne) {
    const Image image = plain(5, 4, 0xFF123456);
    for (const double factor : {1.0, 0.5, -3.0}) {
        const auto result = ImageEnhancement::upscaledImage(image, factor);
        ASSERT_TRUE(result);
        EXPECT_EQ(result->row(0), image.row(0)) << "the very same pixels";
    }
}

TEST(UpscaledImage, RoundsItsSizes) {
    auto result = ImageEnhancement::upscaledImage(plain(101, 51, 0xFFFFFFFF), 2);
    EXPECT_EQ(result->width(), 202);
    EXPECT_EQ(result->height(), 102);
    result = ImageEnhancement::upscaledImage(plain(3, 5, 0xFFFFFFFF), 1.5);
    EXPECT_EQ(result->width(), 5) << "4.5 goes up";
    EXPECT_EQ(result->height(), 8) << "7.5 goes up";
}

TEST(UpscaledImage, KeepsAPlainColour) {
    for (const std::uint32_t colour : {0xFF123456U, 0xFFFFFFFFU, 0xFF000000U, 0x00FF00FFU}) {
        const auto result = ImageEnhancement::upscaledImage(plain(7, 3, colour), 2);
        for (int y = 0; y < result->height(); ++y) {
            for (int x = 0; x < result->width(); ++x) {
                ASSERT_EQ(result->row(y)[x], colour);
            }
        }
    }
}

TEST(UpscaledImage, FollowsARampSmoothly) {
    std::vector<std::uint32_t> pixels;
    for (std::uint32_t x = 0; x < 16; ++x) {
        pixels.push_back(0xFF000000U | (x * 16) << 8U);
    }
    const auto result = ImageEnhancement::upscaledImage(Image(16, 1, pixels), 2);
    ASSERT_EQ(result->width(), 32);
    for (int x = 6; x < 26; ++x) {
        // The middle of target pixel x lies at source position (x + 0.5) / 2 − 0.5.
        const double expected = ((x + 0.5) / 2 - 0.5) * 16;
        const int green = static_cast<int>(result->row(0)[x] >> 8U & 0xFFU);
        EXPECT_NEAR(green, expected, 1.0) << x;
    }
}

TEST(UpscaledImage, SharpensEdgesWithoutLeavingTheRange) {
    std::vector<std::uint32_t> pixels(16, 0xFF000000U);
    std::fill(pixels.begin() + 8, pixels.end(), 0xFFFFFFFFU);
    const auto result = ImageEnhancement::upscaledImage(Image(16, 1, pixels), 2);
    EXPECT_LT(result->row(0)[15] & 0xFFU, 0x60U);
    EXPECT_GT(result->row(0)[16] & 0xFFU, 0xA0U);
    EXPECT_EQ(result->row(0)[0], 0xFF000000U);
    EXPECT_EQ(result->row(0)[31], 0xFFFFFFFFU);
}

TEST(UpscaledImage, WorksOnTheSmallestPictureAndRefusesImpossibleOnes) {
    const auto result = ImageEnhancement::upscaledImage(plain(1, 1, 0xFF102030), 2);
    ASSERT_EQ(result->width(), 2);
    EXPECT_EQ(result->row(1)[1], 0xFF102030U);
    EXPECT_FALSE(ImageEnhancement::upscaledImage(Image(), 2));
    EXPECT_FALSE(ImageEnhancement::upscaledImage(plain(10, 10, 0), 1e9));
    EXPECT_FALSE(ImageEnhancement::upscaledImage(plain(10, 10, 0), 1e300));
}

TEST(GrayscaleContrast, RaisesTheContrastOfTheLuma) {
    const auto grey = [](std::uint32_t colour) {
        return ImageEnhancement::grayscaleContrastImage(plain(1, 1, colour))->row(0)[0];
    };
    EXPECT_EQ(grey(0xFFFFFFFF), 0xFFFFFFFFU);
    EXPECT_EQ(grey(0xFF000000), 0xFF000000U);
    EXPECT_EQ(grey(0xFF808080) & 0xFFU, 128U) << "the middle stays (128.4 of 127.5 + 0.9)";
    // (160 − 127.5) × 1.8 + 127.5 = 186
    EXPECT_EQ(grey(0xFFA0A0A0), 0xFFBABABAU);
    // (192 − 127.5) × 1.8 + 127.5 = 243.6
    EXPECT_EQ(grey(0xFFC0C0C0), 0xFFF4F4F4U);
    // (96 − 127.5) × 1.8 + 127.5 = 70.8
    EXPECT_EQ(grey(0xFF606060), 0xFF474747U);
    // Green: luma 182.4, so 226.3.
    EXPECT_EQ(grey(0xFF00FF00), 0xFFE2E2E2U);
    // Red and blue are too dark to leave anything.
    EXPECT_EQ(grey(0xFFFF0000), 0xFF000000U);
    EXPECT_EQ(grey(0x800000FF), 0x80000000U) << "opacity stays";
}

TEST(GrayscaleContrast, NeedsAPicture) {
    EXPECT_FALSE(ImageEnhancement::grayscaleContrastImage(Image()));
    const auto result = ImageEnhancement::grayscaleContrastImage(plain(3, 2, 0xFFFFFFFF));
    EXPECT_EQ(result->width(), 3);
    EXPECT_EQ(result->height(), 2);
}

}  // namespace
}  // namespace velmora
