// SPDX-License-Identifier: MIT
#include "Velmora/TextCapture/RegionRecognizer.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <vector>

#include "Tests/Support/TextCapture/FakeRecognizer.h"
#include "Tests/Support/TextCapture/FakeText.h"
#include "Velmora/TextCapture/ImageEnhancement.h"

namespace velmora {
namespace {

bool isConfident(const std::string& text, float confidence, float isolated = 0.5F) {
    return RegionRecognizer::isConfidentChineseObservation(FakeText(text, confidence, {}, {1, 1}),
                                                           isolated);
}

Image grey(int width, int height) {
    return {width, height,
            std::vector<std::uint32_t>(
                static_cast<std::size_t>(width) * static_cast<std::size_t>(height), 0xFF808080)};
}

TEST(ConfidenceRule, DependsOnTheNumberOfChineseCharacters) {
    EXPECT_FALSE(isConfident("中", 0.4999F));
    EXPECT_TRUE(isConfident("中", 0.5F));
    EXPECT_TRUE(isConfident("中", 0.45F, 0.45F));
    EXPECT_TRUE(isConfident("中文", 0.35F));
    EXPECT_TRUE(isConfident("中文", 0.3F));
    EXPECT_FALSE(isConfident("中文", 0.2999F));
    EXPECT_TRUE(isConfident("abc", 0.4F));
    EXPECT_FALSE(isConfident("abc", 0.3999F));
    EXPECT_FALSE(isConfident("a中b", 0.45F));
    EXPECT_FALSE(isConfident("", 0.39F));
    EXPECT_FALSE(isConfident("中文", std::numeric_limits<float>::quiet_NaN()));
}

class Regions : public testing::Test {
  protected:
    ExtractorConfiguration configuration;
    std::shared_ptr<FakeRecognizer> recognizer = std::make_shared<FakeRecognizer>();
    RegionRecognizer regions{recognizer, configuration};
};

TEST_F(Regions, HoldEveryTrustedReadingWithItsLine) {
    recognizer->onRecognize = [](const Image&) {
        auto first = FakeText::line("中文", 0.9F, {10, 20, 40, 20}, {200, 100});
        for (const float confidence : {0.8F, 0.7F, 0.6F}) {
            first.candidates.push_back(
                FakeText::line("申文", confidence, {10, 20, 40, 20}, {200, 100}).candidates[0]);
        }
        return std::vector<TextObservation>{
            first, FakeText::line("低", 0.2F, {10, 50, 20, 20}, {200, 100}),
            FakeText::line("ab", 0.5F, {10, 70, 20, 20}, {200, 100})};
    };
    const auto region = regions.recognizeRegion(grey(200, 100), {1000, 500, 100, 50}, 0.5F, {});
    ASSERT_TRUE(region);
    ASSERT_EQ(region->observations.size(), 4U)
        << "three of the first line at most, none of the low";
    for (std::size_t index = 0; index < 3; ++index) {
        EXPECT_EQ(region->observations[index].line, 0U);
        EXPECT_NEAR(region->observations[index].rect.y, 20, 1e-9);
        EXPECT_NEAR(region->observations[index].rect.height, 20, 1e-9);
    }
    EXPECT_EQ(region->observations[3].text, "ab");
    EXPECT_EQ(region->lines.size(), 3U);
    EXPECT_EQ(region->imageSize, (Size{200, 100}));
    EXPECT_EQ(region->scaleX, 2);
    EXPECT_EQ(region->scaleY, 2);
}

TEST_F(Regions, NeedAPictureAndARectangle) {
    EXPECT_FALSE(regions.recognizeRegion(Image(), {0, 0, 10, 10}, 0.5F, {}));
    EXPECT_FALSE(regions.recognizeRegion(grey(10, 10), {0, 0, 0, 10}, 0.5F, {}));
    EXPECT_FALSE(regions.recognizeRegion(grey(10, 10), {0, 0, 10, -10}, 0.5F, {}));
    EXPECT_TRUE(recognizer->sizes.empty());
    EXPECT_TRUE(regions.recognizeRegion(grey(1, 1), {0, 0, 10, 10}, 0.5F, {}));
}

TEST_F(Regions, LeaveOutLinesThatCannotBe) {
    recognizer->onRecognize = [](const Image&) {
        auto line = FakeText::line("中文", 0.9F, {10, 20, 40, 20}, {200, 100});
        line.boundingBox.x = std::numeric_limits<double>::infinity();
        return std::vector<TextObservation>{line, {{0, 0, 1, 1}, {nullptr}}};
    };
    EXPECT_TRUE(
        regions.recognizeRegion(grey(200, 100), {0, 0, 200, 100}, 0.5F, {})->observations.empty());
}

TEST_F(Regions, OfEnhancedPicturesTryEachInOrder) {
    std::vector<std::uint32_t> firstPixels;
    recognizer->onRecognize = [&](const Image& image) {
        firstPixels.push_back(image.row(0)[0]);
        return std::vector<TextObservation>();
    };
    const Image image(2, 1, {0xFFA0A0A0, 0xFFA0A0A0});
    EXPECT_FALSE(regions.recognizeEnhancedRegion(image, {0, 0, 2, 1}, {}));
    EXPECT_EQ(recognizer->sizes, (std::vector<Size>{{2, 1}, {4, 2}, {2, 1}, {4, 2}}));
    EXPECT_EQ(firstPixels,
              (std::vector<std::uint32_t>{0xFFA0A0A0, 0xFFA0A0A0, 0xFFBABABA, 0xFFBABABA}));
}

TEST_F(Regions, OfEnhancedPicturesStopAtTheFirstWithAReading) {
    recognizer->onRecognize = [](const Image& image) {
        return image.width() == 40 ? std::vector<TextObservation>{FakeText::line(
                                         "中文", 0.9F, {10, 5, 20, 10}, {40, 20})}
                                   : std::vector<TextObservation>();
    };
    const auto region = regions.recognizeEnhancedRegion(grey(20, 10), {100, 50, 20, 10}, {105, 52});
    ASSERT_TRUE(region);
    EXPECT_EQ(recognizer->sizes.size(), 2U);
    EXPECT_EQ(region->captureRect, (Rect{100, 50, 20, 10}));
    EXPECT_EQ(region->scaleX, 2);
    EXPECT_EQ(recognizer->points[0], (Point{5, 2}));
    EXPECT_EQ(recognizer->points[1], (Point{10, 4})) << "the hint follows the enlargement";
}

TEST_F(Regions, OfEnhancedPicturesTrustALoneCharacterFromOneHalfOn) {
    for (const double width : {20.0, 40.0}) {
        float confidence = 0.499F;
        recognizer->onRecognize = [&](const Image& image) {
            return image.width() == static_cast<int>(width)
                       ? std::vector<TextObservation>{FakeText::line("中", confidence, {0, 0, 9, 9},
                                                                     {width, width / 2})}
                       : std::vector<TextObservation>();
        };
        EXPECT_FALSE(regions.recognizeEnhancedRegion(grey(20, 10), {0, 0, 20, 10}, {})) << width;
        confidence = 0.5F;
        EXPECT_TRUE(regions.recognizeEnhancedRegion(grey(20, 10), {0, 0, 20, 10}, {})) << width;
    }
}

TEST_F(Regions, OfEnhancedPicturesSurviveFailures) {
    recognizer->onRecognize = [](const Image&) { return std::nullopt; };
    EXPECT_FALSE(regions.recognizeEnhancedRegion(grey(20, 10), {100, 50, 20, 10}, {}));
    EXPECT_EQ(recognizer->sizes.size(), 4U);
}

TEST_F(Regions, VerifiedAtAnotherPointHoldTheSecondAnswer) {
    recognizer->onRecognize = [](const Image&) {
        return std::vector<TextObservation>{
            FakeText::line("中文", 0.9F, {10, 20, 40, 20}, {200, 100})};
    };
    const auto region = regions.recognizeRegion(grey(200, 100), {1000, 500, 100, 50}, 0.5F, {});
    recognizer->onVerify = [](const auto& lines) {
        EXPECT_EQ(lines.size(), 1U);
        auto answer = lines;
        answer[0] = FakeText::line("国文", 0.99F, {10, 20, 40, 20}, {200, 100});
        return answer;
    };
    const auto verified = regions.verifiedRegion(*region, {1010, 505});
    ASSERT_TRUE(verified);
    ASSERT_EQ(verified->observations.size(), 1U);
    EXPECT_EQ(verified->observations[0].text, "国文");
    EXPECT_EQ(verified->captureRect, region->captureRect);
    EXPECT_EQ(recognizer->verifiedPoints, (std::vector<Point>{{20, 10}}));
    recognizer->onVerify = [](const auto&) { return std::nullopt; };
    EXPECT_TRUE(regions.verifiedRegion(*region, {1010, 505})->observations.empty())
        << "what could not be verified is not trusted";
    recognizer->onVerify = nullptr;
    EXPECT_EQ(regions.verifiedRegion(*region, {1010, 505})->observations.size(), 1U);
}

TEST_F(Regions, VerifiedAtAnotherPointTrustALoneCharacterFromOneHalfOn) {
    const auto region = regions.recognizeRegion(grey(200, 100), {1000, 500, 100, 50}, 0.5F, {});
    for (const float confidence : {0.499F, 0.5F}) {
        recognizer->onVerify = [&](const auto&) {
            return std::vector<TextObservation>{
                FakeText::line("中", confidence, {10, 20, 20, 20}, {200, 100})};
        };
        EXPECT_EQ(regions.verifiedRegion(*region, {1010, 505})->observations.size(),
                  confidence < 0.5F ? 0U : 1U);
    }
}

TEST_F(Regions, WithoutTheirPictureNeedARecogniserThatDoesWithout) {
    recognizer->onRecognize = [](const Image&) {
        return std::vector<TextObservation>{
            FakeText::line("中文", 0.9F, {10, 20, 40, 20}, {200, 100})};
    };
    auto region = regions.recognizeRegion(grey(200, 100), {1000, 500, 100, 50}, 0.5F, {});
    region->image = Image();
    EXPECT_EQ(regions.verifiedRegion(*region, {1010, 505})->observations.size(), 1U);
    recognizer->onVerify = [](const auto&) { return std::nullopt; };
    EXPECT_FALSE(regions.verifiedRegion(*region, {1010, 505}));
}

}  // namespace
}  // namespace velmora
