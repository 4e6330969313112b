// SPDX-License-Identifier: MIT
#include "Velmora/TextCapture/DetectedTextRecropper.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <vector>

#include "Tests/Support/TextCapture/FakeDetector.h"
#include "Tests/Support/TextCapture/FakeRecognizer.h"
#include "Tests/Support/TextCapture/FakeText.h"

namespace velmora {
namespace {

// Powers of two, so that boxes survive being normalised to the last bit.
constexpr Size imageSize{1024, 512};

Image picture() {
    return {1024, 512, std::vector<std::uint32_t>(std::size_t{1024} * 512, 0xFFFFFFFF)};
}

/// Closer looks at a picture of 1024 × 512 pixels, two a point, that starts at (1000, 500).
class Recropping : public testing::Test {
  protected:
    void detectCharacter(const Rect& box) {
        texts.push_back(
            {FakeText::normalized(box, imageSize), {FakeText::normalized(box, imageSize)}});
    }

    void detectLine(const Rect& box) {
        texts.push_back({FakeText::normalized(box, imageSize), {}});
    }

    std::optional<OCRDetectedTextHit> hit(Point imagePoint) {
        show();
        return recropper.detectedTextHit(picture(), imagePoint);
    }

    std::optional<RecognizedRegion> look(Point imagePoint) {
        show();
        return recropper.recognizeDetectedTextRegion(
            {picture(), {1000, 500, 512, 256}}, {1000 + imagePoint.x / 2, 500 + imagePoint.y / 2});
    }

    /// Every crop shows one line over its whole size.
    void recognizeWholeCrop() {
        recognizer->onRecognize = [](const Image& image) {
            const Size size{static_cast<double>(image.width()),
                            static_cast<double>(image.height())};
            return std::vector<TextObservation>{
                FakeText::line("中", 0.9F, {0, 0, size.width, size.height}, size)};
        };
    }

    std::vector<DetectedText> texts;
    ExtractorConfiguration configuration;
    std::shared_ptr<FakeDetector> detector = std::make_shared<FakeDetector>();
    std::shared_ptr<FakeRecognizer> recognizer = std::make_shared<FakeRecognizer>();
    RegionRecognizer regions{recognizer, configuration};
    DetectedTextRecropper recropper{detector, regions, configuration};

  private:
    void show() {
        detector->onDetect = [this](const Image&) { return texts; };
    }
};

TEST_F(Recropping, HitsACharacterWithItsTolerance) {
    detectCharacter({100, 100, 20, 20});
    EXPECT_EQ(hit({122, 110}), (OCRDetectedTextHit{{100, 100, 20, 20}, 0}));
    EXPECT_FALSE(hit({123, 110})) << "2.4 pixels are tolerated";
    EXPECT_TRUE(hit({110, 121.9}));
    EXPECT_FALSE(hit({110, 122.1}));
}

TEST_F(Recropping, TakesTheSmallestCharacter) {
    detectCharacter({100, 100, 40, 40});
    detectCharacter({100, 100, 20, 20});
    detectCharacter({101, 101, 20, 20});
    EXPECT_EQ(hit({110, 110})->rect, (Rect{100, 100, 20, 20})) << "the earlier of equal sizes";
}

TEST_F(Recropping, TakesACharacterBeforeALine) {
    detectLine({90, 100, 200, 20});
    detectCharacter({100, 90, 100, 100});
    EXPECT_EQ(hit({110, 110})->rect, (Rect{100, 90, 100, 100}));
}

TEST_F(Recropping, TakesALineWhoseCentreIsNearest) {
    detectLine({100, 100, 200, 20});
    EXPECT_EQ(hit({110, 110}), (OCRDetectedTextHit{{100, 100, 200, 20}, 90}));
    EXPECT_EQ(hit({188, 105})->score, 13) << "12 to the left and 5 above";
    detectLine({100, 100, 100, 20});
    EXPECT_EQ(hit({110, 110})->rect, (Rect{100, 100, 200, 20}))
        << "no further line once there is a hit";
    EXPECT_TRUE(hit({92, 110}));
    EXPECT_FALSE(hit({91, 110}));
    EXPECT_TRUE(hit({110, 95}));
    EXPECT_FALSE(hit({110, 94.9}));
}

TEST_F(Recropping, DoesNotTakeTheLineOfDetectedCharacters) {
    texts.push_back({FakeText::normalized({100, 100, 200, 20}, imageSize),
                     {FakeText::normalized({100, 100, 20, 20}, imageSize)}});
    EXPECT_FALSE(hit({250, 110}));
}

TEST_F(Recropping, IgnoresBoxesThatCannotBe) {
    texts.push_back({{}, {FakeText::normalized({100, 100, 0, 20}, imageSize), {NAN, 0, 1, 1}}});
    texts.push_back({{0, 0, INFINITY, 1}, {}});
    EXPECT_FALSE(hit({100, 110}));
    EXPECT_FALSE(recropper.detectedTextHit(Image(), {0, 0}));
    detector->onDetect = [](const Image&) { return std::nullopt; };
    EXPECT_FALSE(recropper.detectedTextHit(picture(), {0, 0}));
}

TEST_F(Recropping, CutsOutTheCharacterWithAMargin) {
    detectCharacter({100, 100, 20, 20});
    recognizeWholeCrop();
    const auto region = look({110, 110});
    ASSERT_TRUE(region);
    EXPECT_EQ(recognizer->sizes, (std::vector<Size>{{36, 36}}));
    EXPECT_EQ(region->captureRect, (Rect{1046, 546, 18, 18}));
    EXPECT_EQ(region->scaleX, 2);
}

TEST_F(Recropping, PadsLargeBoxesByFortyAtMost) {
    detectCharacter({100, 100, 300, 300});
    recognizeWholeCrop();
    ASSERT_TRUE(look({200, 200}));
    EXPECT_EQ(recognizer->sizes, (std::vector<Size>{{380, 380}}));
}

TEST_F(Recropping, PadsMiddlingBoxesByTheirShare) {
    detectCharacter({100, 100, 100, 50});
    recognizeWholeCrop();
    ASSERT_TRUE(look({150, 120}));
    EXPECT_EQ(recognizer->sizes, (std::vector<Size>{{136, 86}}));
}

TEST_F(Recropping, CapsTheMarginLast) {
    configuration.ocrDetectedTextRecropMinimumPadding = 30;
    configuration.ocrDetectedTextRecropMaximumPadding = 4;
    detectCharacter({100, 100, 100, 50});
    recognizeWholeCrop();
    ASSERT_TRUE(look({150, 120}));
    EXPECT_EQ(recognizer->sizes, (std::vector<Size>{{108, 58}}));
}

TEST_F(Recropping, GrowsToWholePixelsAndStaysInThePicture) {
    detectCharacter({0.5, 0.5, 20, 20});
    recognizeWholeCrop();
    const auto region = look({10, 10});
    ASSERT_TRUE(region);
    EXPECT_EQ(recognizer->sizes, (std::vector<Size>{{29, 29}}));
    EXPECT_EQ(region->captureRect, (Rect{1000, 500, 14.5, 14.5}));
}

TEST_F(Recropping, NeedsALineAtThePointer) {
    detectCharacter({100, 100, 100, 100});
    recognizer->onRecognize = [](const Image&) {
        return std::vector<TextObservation>{FakeText::line("中", 0.9F, {0, 0, 20, 20}, {136, 136})};
    };
    EXPECT_FALSE(look({150, 150}));
    recognizer->onRecognize = [](const Image&) { return std::vector<TextObservation>(); };
    EXPECT_FALSE(look({150, 150}));
    texts.clear();
    recognizeWholeCrop();
    EXPECT_FALSE(look({150, 150}));
}

TEST_F(Recropping, ReadsTheEnlargedCropToo) {
    detectCharacter({100, 100, 20, 20});
    recognizer->onRecognize = [](const Image& image) {
        return image.width() == 72 ? std::vector<TextObservation>{FakeText::line(
                                         "中", 0.9F, {16, 16, 40, 40}, {72, 72})}
                                   : std::vector<TextObservation>();
    };
    const auto region = look({110, 110});
    ASSERT_TRUE(region);
    EXPECT_EQ(region->scaleX, 4);
    EXPECT_EQ(region->captureRect, (Rect{1046, 546, 18, 18}));
}

TEST_F(Recropping, NeedsAPictureAndARectangle) {
    detectCharacter({100, 100, 20, 20});
    recognizeWholeCrop();
    EXPECT_FALSE(recropper.recognizeDetectedTextRegion({Image(), {0, 0, 10, 10}}, {5, 5}));
    EXPECT_FALSE(recropper.recognizeDetectedTextRegion({picture(), {0, 0, 0, 10}}, {5, 5}));
}

}  // namespace
}  // namespace velmora
