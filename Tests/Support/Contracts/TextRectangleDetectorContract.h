// SPDX-License-Identifier: MIT
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <memory>
#include <optional>
#include <ostream>
#include <string>
#include <vector>

#include "Velmora/Platform/TextRectangleDetector.h"

namespace velmora {

/// A detector to hold against the contract of every detector: which one, how it is made, and a
/// picture with a text in it. Instantiate `TextRectangleDetectorContract` with one for each
/// backend.
struct TextRectangleDetectorSubject {
    std::string name;
    std::function<std::shared_ptr<TextRectangleDetector>()> make;
    std::function<Image()> picture;
    Point point;  ///< A pixel of the picture on one of the text's characters.

    friend std::ostream& operator<<(std::ostream& out,
                                    const TextRectangleDetectorSubject& subject) {
        return out << subject.name;
    }
};

class TextRectangleDetectorContract
    : public ::testing::TestWithParam<TextRectangleDetectorSubject> {
  protected:
    using Texts = std::optional<std::vector<DetectedText>>;

    static bool isSound(const Rect& box) {
        constexpr double tolerance = 1e-9;
        return box.isFinite() && !box.isEmpty() && box.minX() >= -tolerance &&
               box.minY() >= -tolerance && box.maxX() <= 1 + tolerance &&
               box.maxY() <= 1 + tolerance;
    }

    static void expectSound(const Texts& texts) {
        for (const DetectedText& text : texts.value_or(std::vector<DetectedText>())) {
            EXPECT_TRUE(isSound(text.boundingBox));
            EXPECT_TRUE(
                std::all_of(text.characterBoxes.begin(), text.characterBoxes.end(), isSound));
        }
    }

    std::shared_ptr<TextRectangleDetector> detector = GetParam().make();
};

GTEST_ALLOW_UNINSTANTIATED_PARAMETERIZED_TEST(TextRectangleDetectorContract);

TEST_P(TextRectangleDetectorContract, FindsACharacterWhereOneStands) {
    const Image image = GetParam().picture();
    const auto texts = detector->detect(image);
    ASSERT_TRUE(texts);
    expectSound(texts);
    const Point point{GetParam().point.x / image.width(), 1 - GetParam().point.y / image.height()};
    EXPECT_TRUE(std::any_of(texts->begin(), texts->end(), [&](const DetectedText& text) {
        return text.boundingBox.contains(point) &&
               std::any_of(text.characterBoxes.begin(), text.characterBoxes.end(),
                           [&](const Rect& box) { return box.contains(point); });
    }));
}

TEST_P(TextRectangleDetectorContract, AnswersTheSameAgain) {
    const auto first = detector->detect(GetParam().picture());
    const auto second = detector->detect(GetParam().picture());
    ASSERT_TRUE(first && second);
    ASSERT_EQ(first->size(), second->size());
    for (std::size_t index = 0; index < first->size(); ++index) {
        EXPECT_EQ(first->at(index).boundingBox, second->at(index).boundingBox);
        EXPECT_EQ(first->at(index).characterBoxes, second->at(index).characterBoxes);
    }
}

TEST_P(TextRectangleDetectorContract, SurvivesPicturesWithoutText) {
    expectSound(detector->detect(Image()));
    expectSound(detector->detect(Image(1, 1, {0xFFFFFFFF})));
    expectSound(detector->detect(Image(1, 300, std::vector<std::uint32_t>(300, 0xFF000000))));
    expectSound(detector->detect(Image(300, 1, std::vector<std::uint32_t>(300, 0xFF000000))));
}

}  // namespace velmora
