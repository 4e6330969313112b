// SPDX-License-Identifier: MIT
#include "Velmora/Platform/Recognition/GlyphFeatures.h"

#include <gtest/gtest.h>

#include "Tests/Velmora/Recognition/Drawing.h"

namespace velmora {
namespace {

GlyphFeatures featuresOf(int size, int left, int top, std::uint8_t ink) {
    GrayImage image(size + 20, size + 20, 255);
    drawCharacter(image, left, top, size, ink);
    return *GlyphFeatures::of(image);
}

TEST(GlyphFeatures, DoNotDependOnSizePlaceAndStrength) {
    const GlyphFeatures features = featuresOf(32, 4, 4, 0);
    EXPECT_GT(features.similarity(featuresOf(32, 15, 9, 0).values()), 0.99F);
    EXPECT_GT(features.similarity(featuresOf(32, 4, 4, 90).values()), 0.98F);
    EXPECT_GT(features.similarity(featuresOf(48, 4, 4, 0).values()), 0.9F);
}

TEST(GlyphFeatures, AreTheSameOnlyForTheSame) {
    const GlyphFeatures features = featuresOf(32, 4, 4, 0);
    EXPECT_NEAR(features.similarity(features.values()), 1, 0.02);
    GrayImage frame(40, 40, 255);
    drawFrame(frame, {4, 4, 36, 36}, 3, 0);
    EXPECT_LT(features.similarity(GlyphFeatures::of(frame)->values()), 0.8F);
}

TEST(GlyphFeatures, TellAnUprightFromABar) {
    GrayImage upright(40, 40, 255);
    fill(upright, {18, 4, 21, 36}, 0);
    GrayImage bar(40, 40, 255);
    fill(bar, {4, 18, 36, 21}, 0);
    const auto first = GlyphFeatures::of(upright);
    EXPECT_LT(first->similarity(GlyphFeatures::of(bar)->values()), 0.3F);
}

TEST(GlyphFeatures, NothingWithoutInk) {
    EXPECT_FALSE(GlyphFeatures::of(GrayImage(20, 20, 255)));
    EXPECT_FALSE(GlyphFeatures::of(GrayImage()));
}

TEST(GlyphFeatures, ComeBackFromTheirValues) {
    const GlyphFeatures features = featuresOf(32, 4, 4, 0);
    EXPECT_EQ(GlyphFeatures(features.values()).values(), features.values());
}

}  // namespace
}  // namespace velmora
