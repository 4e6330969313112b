// SPDX-License-Identifier: MIT
#include "Velmora/Platform/Linux/Tesseract/LineDetector.h"

#include <gtest/gtest.h>

#include "Tests/Contracts/Tesseract/Pictures.h"

namespace velmora {
namespace {

TEST(LineDetector, FindsTheLineAndABoxForEachOfItsCharacters) {
    LineDetector detector;
    const auto texts = detector.detect(fixturePicture("simplified-light"));
    ASSERT_TRUE(texts);
    ASSERT_EQ(texts->size(), 1U);
    EXPECT_EQ(texts->front().characterBoxes.size(), 9U);
    for (const Rect& box : texts->front().characterBoxes) {
        EXPECT_GE(box.minX(), 0);
        EXPECT_LE(box.maxX(), 1);
        EXPECT_NEAR(box.width * 420, 20, 6);
        EXPECT_DOUBLE_EQ(box.y, texts->front().boundingBox.y);
    }
}

TEST(LineDetector, FindsNothingOnPlainPicturesAndFailsOnEmptyOnes) {
    LineDetector detector;
    for (const auto& [width, height] : {std::pair{1, 1}, {400, 300}, {20000, 100}}) {
        const auto texts = detector.detect(plainPicture(width, height, 0xFF202020));
        ASSERT_TRUE(texts);
        EXPECT_TRUE(texts->empty());
    }
    EXPECT_FALSE(detector.detect(Image()));
}

}  // namespace
}  // namespace velmora
