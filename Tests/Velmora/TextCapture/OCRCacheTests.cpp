// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <string>

#include "Tests/Support/TextCapture/ExtractionStage.h"

namespace velmora {
namespace {

// A line of thirteen square characters fills the width of a capture.
const std::string first = "一二三四五六七八九十百千万";
const std::string second = "东南西北上下左右前后里外中";

/// The desktop is 1000 high, so y turns around 500; the pointer starts in the middle.
class Cache : public testing::Test {
  protected:
    Cache() {
        stage.accessibility->element = FakeElement::make();
        show(first);
        // Tall enough captures, so that there is room for the pointer inside the inset.
        ExtractorConfiguration configuration;
        configuration.ocrCaptureSizes = {{520, 240}};
        extractor = stage.extractor(configuration);
    }

    /// Every picture is full of lines of this text, 40 pixels apart.
    void show(const std::string& text) {
        stage.recognizer->onRecognize = [text](const Image& image) {
            const Size size{static_cast<double>(image.width()),
                            static_cast<double>(image.height())};
            std::vector<TextObservation> lines;
            for (double y = 0; y + 40 <= size.height; y += 40) {
                lines.push_back(FakeText::line(text, 1.0F, {0, y, size.width, 40}, size));
            }
            return lines;
        };
    }

    std::string read(Point point = {800, 500}) {
        const auto probe = extractor->extract(point, {});
        return probe ? probe->text : "";
    }

    std::size_t recognitions() const { return stage.recognizer->sizes.size(); }

    ExtractionStage stage;
    std::shared_ptr<AccessibilityTextExtractor> extractor;
};

// The first capture covers (540…1060, 380…620).

TEST_F(Cache, ServesThePointerForOneAndAHalfSeconds) {
    EXPECT_EQ(read(), first);
    EXPECT_EQ(recognitions(), 1U);
    show(second);
    stage.clock->advance(1.5);
    EXPECT_EQ(read({640, 450}), first) << "100 and 70 points from the edges";
    EXPECT_EQ(recognitions(), 1U);
    stage.clock->advance(0.1);
    EXPECT_EQ(read({640, 450}), second);
    EXPECT_EQ(recognitions(), 2U);
}

TEST_F(Cache, IsNotRenewedByUse) {
    read();
    stage.clock->advance(1);
    read();
    stage.clock->advance(1);
    read();
    EXPECT_EQ(recognitions(), 2U);
}

TEST_F(Cache, AgesFromTheMomentThatReadingBegan) {
    const auto lines = stage.recognizer->onRecognize;
    stage.recognizer->onRecognize = [&](const Image& image) {
        stage.clock->advance(1);
        return lines(image);
    };
    read();
    stage.clock->advance(0.5);
    read();
    EXPECT_EQ(recognitions(), 1U);
    stage.clock->advance(0.1);
    read();
    EXPECT_EQ(recognitions(), 2U);
}

TEST_F(Cache, KeepsSixtyFourPointsFromTheEdges) {
    read();
    read({604, 500});
    EXPECT_EQ(recognitions(), 1U);
    read({603.9, 500});
    EXPECT_EQ(recognitions(), 2U);
}

TEST_F(Cache, KeepsSixtyFourPointsFromTheUpperEdge) {
    read();
    // In capture space the upper edge is at 380; screen space counts the other way round.
    read({800, 1000 - 444});
    EXPECT_EQ(recognitions(), 1U);
    read({800, 1000 - 430});
    EXPECT_EQ(recognitions(), 2U);
}

TEST_F(Cache, SurvivesAFailedRecognition) {
    read();
    stage.recognizer->onRecognize = [](const Image&) { return std::nullopt; };
    EXPECT_EQ(read({100, 100}), "") << "elsewhere, and nothing there";
    const std::size_t before = recognitions();
    stage.clock->advance(1);
    EXPECT_EQ(read(), first);
    EXPECT_EQ(recognitions(), before);
}

TEST_F(Cache, IsReplacedByTheNextRegion) {
    read();
    read({200, 500});
    EXPECT_EQ(recognitions(), 2U);
    read({800, 500});
    EXPECT_EQ(recognitions(), 3U);
}

TEST_F(Cache, IsVerifiedAtEveryOtherPlace) {
    read();
    read();
    EXPECT_TRUE(stage.recognizer->verifiedPoints.empty()) << "the very place it was read for";
    read({700, 460});
    EXPECT_EQ(stage.recognizer->verifiedPoints, (std::vector<Point>{{160, 160}}));
}

TEST_F(Cache, IsTakenAsTheRecogniserVerifiesIt) {
    read();
    stage.recognizer->onVerify = [](const auto& lines) {
        auto silent = lines;
        for (auto& line : silent) {
            line.candidates.clear();
        }
        return silent;
    };
    EXPECT_EQ(read({700, 460}), "");
    EXPECT_EQ(recognitions(), 1U) << "silence is an answer";
    stage.recognizer->onVerify = nullptr;
    EXPECT_EQ(read({700, 460}), first) << "the entry itself stays as it was";
}

TEST_F(Cache, LooksAgainWhereAPictureWasTooLargeToKeepAndIsNeeded) {
    stage.screens->list = {{{0, 0, 3840, 2160}, {0, 0, 3840, 2160}}};
    stage.screen->list = {{1, {0, 0, 3840, 2160}}};
    ExtractorConfiguration configuration;
    configuration.ocrCaptureSizes = {{3000, 3000}};
    extractor = stage.extractor(configuration);
    EXPECT_NE(read({2000, 980}), "");
    EXPECT_NE(read({2000, 980}), "");
    EXPECT_NE(read({2100, 980}), "");
    EXPECT_EQ(recognitions(), 1U) << "this recogniser needs no picture";
    stage.recognizer->onVerify = [](const auto&) { return std::nullopt; };
    EXPECT_NE(read({2200, 980}), "");
    EXPECT_EQ(recognitions(), 2U);
    EXPECT_NE(read({2200, 980}), "");
    EXPECT_EQ(recognitions(), 2U) << "the new answer is kept";
}

TEST_F(Cache, DoesNotServeSmallRegions) {
    ExtractorConfiguration configuration;
    configuration.ocrCaptureSizes = {{128, 500}};
    extractor = stage.extractor(configuration);
    read();
    read();
    EXPECT_EQ(recognitions(), 2U);
}

TEST_F(Cache, KeepsNoLargePicture) {
    OCRCacheEntry entry;
    entry.region.image = Image(2, 1, {1, 2});
    entry.region.imageSize = {2048, 2048};
    entry.dropLargeImage();
    EXPECT_FALSE(entry.region.image.isEmpty());
    entry.region.imageSize = {2048, 2049};
    entry.dropLargeImage();
    EXPECT_TRUE(entry.region.image.isEmpty());
}

}  // namespace
}  // namespace velmora
