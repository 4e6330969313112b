// SPDX-License-Identifier: MIT
#include "Velmora/TextCapture/CaptureSequence.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

#include "Tests/Support/TextCapture/FakeDetector.h"
#include "Tests/Support/TextCapture/FakeRecognizer.h"
#include "Tests/Support/TextCapture/FakeScreenCapture.h"
#include "Tests/Support/TextCapture/FakeText.h"
#include "Velmora/Platform/Recorded/ManualClock.h"
#include "Velmora/TextCapture/LiveCapture.h"

namespace velmora {
namespace {

constexpr Point pointer{800, 500};

const std::vector<Size> smallSizes = {{520, 160}, {520, 240}, {520, 280},
                                      {700, 360}, {900, 500}, {1200, 700}};

Size sizeOf(const Image& image) {
    return {static_cast<double>(image.width()), static_cast<double>(image.height())};
}

/// One line in the middle of a picture, the pointer on its first character.
std::vector<TextObservation> centredLine(const Image& image, const std::string& text,
                                         float confidence, double cell = 20) {
    const Size size = sizeOf(image);
    return {FakeText::line(text, confidence,
                           {size.width / 2 - cell / 2, size.height / 2 - cell / 2, 2 * cell, cell},
                           size)};
}

/// A picture that the closer look has cut out of a capture.
bool isCutOut(const Image& image) {
    return image.width() < 100;
}

/// A line without boxes below the reach of the pointer: recognised, but not there.
std::vector<TextObservation> distantLine(const Image& image) {
    return {FakeText::lineWithoutBoxes("远方", 1.0F, {0, 0, 40, 20}, sizeOf(image))};
}

/// What the attempts say.
class Outcomes final : public ExtractionTrace {
  public:
    void attemptEnded(const std::string& attempt, const std::string& outcome, double) override {
        all.push_back(attempt + ": " + outcome);
    }

    std::vector<std::string> all;
};

/// Runs sequences over a screen of 1600 × 1000 points.
class Sequence : public testing::Test {
  protected:
    std::optional<RecognizedRegion> run(Point point = pointer) {
        const CaptureFunction capture = LiveCapture(screen);
        const RegionRecognizer regions(recognizer, configuration);
        const DetectedTextRecropper recropper(detector, regions, configuration);
        return CaptureSequence(capture, regions, recropper, configuration, {&outcomes, &clock})
            .recognizeRegion(point);
    }

    /// The sizes captured so far, in order.
    std::vector<Size> capturedSizes() const {
        std::vector<Size> sizes;
        for (const auto& [display, rect] : screen->captured) {
            sizes.push_back(rect.size());
        }
        return sizes;
    }

    /// Lets the detector find one character of 20 × 20 pixels under the middle of every picture.
    void detectCharacterAtCentre() {
        detector->onDetect = [](const Image& image) {
            const Size size = sizeOf(image);
            const Rect box{size.width / 2 - 10, size.height / 2 - 10, 20, 20};
            return std::vector<DetectedText>{
                {FakeText::normalized(box, size), {FakeText::normalized(box, size)}}};
        };
    }

    Outcomes outcomes;
    ManualClock clock;
    ExtractorConfiguration configuration;
    std::shared_ptr<FakeScreenCapture> screen = std::make_shared<FakeScreenCapture>();
    std::shared_ptr<FakeRecognizer> recognizer = std::make_shared<FakeRecognizer>();
    std::shared_ptr<FakeDetector> detector = std::make_shared<FakeDetector>();
};

TEST_F(Sequence, StopsAtTheFirstAcceptedCapture) {
    recognizer->onRecognize = [](const Image& image) { return centredLine(image, "中文", 1); };
    const auto region = run();
    ASSERT_TRUE(region);
    EXPECT_EQ(region->captureRect, (Rect{540, 420, 520, 160}));
    EXPECT_EQ(region->imageSize, (Size{520, 160}));
    EXPECT_EQ(region->scaleX, 1);
    EXPECT_EQ(region->scaleY, 1);
    EXPECT_EQ(recognizer->points, (std::vector<std::optional<Point>>{Point{260, 80}}));
    EXPECT_EQ(recognizer->limits, std::vector<int>{3});
}

TEST_F(Sequence, CountsPixelsAndPointsApart) {
    screen->scale = 2;
    recognizer->onRecognize = [](const Image& image) { return centredLine(image, "中文", 1); };
    const auto region = run();
    ASSERT_TRUE(region);
    EXPECT_EQ(region->imageSize, (Size{1040, 320}));
    EXPECT_EQ(region->scaleX, 2);
    EXPECT_EQ(region->observations[0].rect, (Rect{510, 150, 40, 20}));
    EXPECT_EQ(recognizer->points, (std::vector<std::optional<Point>>{Point{520, 160}}));
}

TEST_F(Sequence, GrowsUntilOneIsAccepted) {
    recognizer->onRecognize = [](const Image& image) {
        return centredLine(image, "中文", image.width() >= 900 ? 1.0F : 0.9F);
    };
    const auto region = run();
    ASSERT_TRUE(region);
    EXPECT_EQ(region->captureRect.size(), (Size{900, 500}));
    EXPECT_EQ(capturedSizes(), std::vector<Size>(smallSizes.begin(), smallSizes.begin() + 5));
    EXPECT_TRUE(detector->sizes.empty());
}

TEST_F(Sequence, FallsBackOnTheLastUsableRegion) {
    recognizer->onRecognize = [](const Image& image) {
        return image.width() <= 700 ? centredLine(image, "中文", 0.9F) : distantLine(image);
    };
    const auto region = run();
    ASSERT_TRUE(region);
    EXPECT_EQ(region->captureRect.size(), (Size{700, 360}));
    EXPECT_EQ(capturedSizes().size(), 7U) << "the whole screen was tried as well";
    EXPECT_TRUE(detector->sizes.empty()) << "no closer look where there is a fallback";
}

TEST_F(Sequence, LooksCloserFromTheLastCaptureToTheFirst) {
    EXPECT_FALSE(run());
    std::vector<Size> expected(smallSizes.rbegin(), smallSizes.rend());
    expected.push_back({1600, 1000});
    expected.insert(expected.end(), smallSizes.rbegin(), smallSizes.rend());
    EXPECT_EQ(detector->sizes, expected) << "once before and once after the whole screen";
    EXPECT_EQ(capturedSizes().back(), (Size{1600, 1000})) << "clipped to the display";
    EXPECT_EQ(capturedSizes().size(), 7U);
}

TEST_F(Sequence, TakesWhatTheCloserLookFinds) {
    detectCharacterAtCentre();
    recognizer->onRecognize = [](const Image& image) {
        return isCutOut(image) ? centredLine(image, "中文", 1) : std::vector<TextObservation>();
    };
    const auto region = run();
    ASSERT_TRUE(region);
    EXPECT_EQ(detector->sizes, (std::vector<Size>{{1200, 700}}));
    // 20 pixels and 8 on each side; what lies a hair over a whole pixel takes one more.
    EXPECT_NEAR(region->captureRect.x, 782, 1);
    EXPECT_NEAR(region->captureRect.y, 482, 1);
    EXPECT_NEAR(region->captureRect.width, 36, 2);
    EXPECT_EQ(capturedSizes(), smallSizes);
}

TEST_F(Sequence, DropsAnUncertainCloserLookForTheWholeScreen) {
    detectCharacterAtCentre();
    recognizer->onRecognize = [](const Image& image) {
        return isCutOut(image)         ? centredLine(image, "中文", 0.9F)
               : image.width() == 1600 ? centredLine(image, "全屏", 1)
                                       : std::vector<TextObservation>();
    };
    const auto region = run();
    ASSERT_TRUE(region);
    EXPECT_EQ(region->observations[0].text, "全屏");
    EXPECT_EQ(detector->sizes.size(), 6U);
}

TEST_F(Sequence, KeepsAnUncertainCloserLookAsFallback) {
    detectCharacterAtCentre();
    recognizer->onRecognize = [](const Image& image) {
        return isCutOut(image) ? centredLine(image, "中文", 0.9F) : std::vector<TextObservation>();
    };
    const auto region = run();
    ASSERT_TRUE(region);
    EXPECT_LT(region->imageSize.width, 100);
    EXPECT_EQ(detector->sizes.size(), 6U) << "no second round where there is a fallback";
}

TEST_F(Sequence, FallsBackOnTheWholeScreenToo) {
    recognizer->onRecognize = [](const Image& image) {
        return image.width() == 1600 ? centredLine(image, "中文", 0.9F)
                                     : std::vector<TextObservation>();
    };
    const auto region = run();
    ASSERT_TRUE(region);
    EXPECT_EQ(region->captureRect.size(), (Size{1600, 1000}));
    EXPECT_EQ(detector->sizes.size(), 6U) << "no second round where there is a fallback by now";
}

TEST_F(Sequence, LooksCloserAtEveryCaptureThatSucceeded) {
    screen->fails = [](const Rect& rect) { return rect.width == 900; };
    recognizer->onRecognize = [](const Image&) { return std::nullopt; };
    EXPECT_FALSE(run());
    const std::vector<Size> round = {{1200, 700}, {700, 360}, {520, 280}, {520, 240}, {520, 160}};
    std::vector<Size> expected = round;
    expected.push_back({1600, 1000});
    expected.insert(expected.end(), round.begin(), round.end());
    EXPECT_EQ(detector->sizes, expected) << "also at those that could not be recognised";
}

TEST_F(Sequence, SkipsCapturesThatFail) {
    screen->fails = [](const Rect& rect) { return rect.height < 300; };
    recognizer->onRecognize = [](const Image& image) { return centredLine(image, "中文", 1); };
    const auto region = run();
    ASSERT_TRUE(region);
    EXPECT_EQ(region->captureRect.size(), (Size{700, 360}));
    EXPECT_EQ(recognizer->sizes, (std::vector<Size>{{700, 360}}));
}

TEST_F(Sequence, GoesOnWhenRecognitionFails) {
    recognizer->onRecognize =
        [](const Image& image) -> std::optional<std::vector<TextObservation>> {
        if (image.height() < 240) {
            return std::nullopt;
        }
        return centredLine(image, "中文", 1);
    };
    EXPECT_EQ(run()->captureRect.size(), (Size{520, 240}));
}

TEST_F(Sequence, SaysWhyRecognitionIsSilent) {
    using Stage = RecognitionStatus::Stage;
    recognizer->onRecognize = [](const Image&) { return std::nullopt; };
    const auto saidFor = [this](const RecognitionStatus& status) {
        recognizer->currentStatus = status;
        outcomes.all.clear();
        EXPECT_FALSE(run());
        return outcomes.all.front();
    };
    EXPECT_EQ(saidFor({Stage::loading, {}, {}, "loading"}),
              "capture: 520 x 160: text recognition is not loaded yet");
    EXPECT_EQ(saidFor({Stage::notStarted, {}, {}, "not started"}),
              "capture: 520 x 160: text recognition is not loaded yet");
    EXPECT_EQ(saidFor({Stage::unavailable, {"chi_sim"}, {}, "install something"}),
              "capture: 520 x 160: no text recognition: install something");
    EXPECT_EQ(saidFor({}), "capture: 520 x 160: text recognition gives no answer");
}

TEST_F(Sequence, EndsWhereThereIsNobodyToRead) {
    using Stage = RecognitionStatus::Stage;
    detectCharacterAtCentre();
    recognizer->onRecognize = [](const Image&) { return std::nullopt; };
    for (const Stage stage : {Stage::notStarted, Stage::loading, Stage::unavailable}) {
        recognizer->currentStatus.stage = stage;
        screen->captured.clear();
        EXPECT_FALSE(run());
        EXPECT_EQ(capturedSizes().size(), 1U);
        EXPECT_TRUE(detector->sizes.empty());
    }
}

TEST_F(Sequence, KeepsWhatWasReadBeforeTheReaderWent) {
    recognizer->onRecognize = [this](const Image& image) -> FakeRecognizer::Lines {
        if (image.height() > 240) {
            recognizer->currentStatus.stage = RecognitionStatus::Stage::loading;
            return std::nullopt;
        }
        return centredLine(image, "中文", 0.9F);
    };
    const auto region = run();
    ASSERT_TRUE(region);
    EXPECT_EQ(region->captureRect.size(), (Size{520, 240}));
    EXPECT_EQ(capturedSizes().size(), 3U);
}

TEST_F(Sequence, TakesFiveSecondsAndEndsWithWhatItHas) {
    recognizer->onRecognize = [this](const Image& image) {
        clock.advance(1.25);
        return image.height() > 240 ? distantLine(image) : centredLine(image, "中文", 0.9F);
    };
    const auto region = run();
    ASSERT_TRUE(region);
    EXPECT_EQ(region->captureRect.size(), (Size{520, 240}));
    EXPECT_EQ(capturedSizes(), std::vector<Size>(smallSizes.begin(), smallSizes.begin() + 5))
        << "exactly five are not too many yet";
    EXPECT_EQ(outcomes.all.back(), "capture: no more, this took too long already");
}

TEST_F(Sequence, LooksNoCloserAfterFiveSeconds) {
    detectCharacterAtCentre();
    recognizer->onRecognize = [this](const Image& image) {
        clock.advance(isCutOut(image) ? 0.5 : 0.7);
        return std::vector<TextObservation>();
    };
    EXPECT_FALSE(run());
    // Six captures take 4.2 seconds, the closer look at one of them two more.
    EXPECT_EQ(detector->sizes.size(), 1U);
    EXPECT_EQ(capturedSizes().size(), 6U);
}

TEST_F(Sequence, KeepsWhatItHasWhereTheDisplaysGoAway) {
    recognizer->onRecognize = [this](const Image& image) {
        screen->list.clear();
        return centredLine(image, "中文", 0.9F);
    };
    const auto region = run();
    ASSERT_TRUE(region);
    EXPECT_EQ(region->captureRect.size(), (Size{520, 160}));
    EXPECT_EQ(capturedSizes().size(), 1U);
}

TEST_F(Sequence, DoesNotOfferWhatIsNotTrusted) {
    // A certain position, but a lone character below 0.5.
    recognizer->onRecognize = [](const Image& image) { return centredLine(image, "中a", 0.45F); };
    EXPECT_FALSE(run()) << "otherwise it would have become the fallback";
}

TEST_F(Sequence, EndsWithoutDisplays) {
    screen->list.clear();
    EXPECT_FALSE(run());
    EXPECT_TRUE(recognizer->sizes.empty());
}

class Live : public testing::Test {
  protected:
    std::shared_ptr<FakeScreenCapture> screen = std::make_shared<FakeScreenCapture>();
    LiveCapture capture{screen};
};

TEST_F(Live, PicksTheDisplayUnderThePointer) {
    screen->list = {{7, {0, 0, 1600, 1000}}, {8, {1600, -200, 800, 600}}};
    EXPECT_EQ(capture.liveDisplayID({10, 10}), 7U);
    EXPECT_EQ(capture.liveDisplayID({1600, 0}), 8U);
    EXPECT_EQ(capture.liveDisplayID({1599.9, 0}), 7U);
    EXPECT_EQ(capture.liveDisplayID({-5000, 0}), 7U) << "the main one";
    screen->list.clear();
    EXPECT_FALSE(capture.liveDisplayID({10, 10}));
}

TEST_F(Live, CentresOnThePointer) {
    const auto result = capture({800, 500}, {520, 160});
    ASSERT_TRUE(result);
    EXPECT_EQ(result->captureRect, (Rect{540, 420, 520, 160}));
    EXPECT_EQ(result->image.width(), 520);
}

TEST_F(Live, IsClippedToItsDisplay) {
    EXPECT_EQ(capture({100, 500}, {520, 160})->captureRect, (Rect{0, 420, 360, 160}));
    screen->list = {{7, {0, 0, 1600, 1000}}, {8, {1600, 0, 800, 600}}};
    EXPECT_EQ(capture({1590, 500}, {520, 160})->captureRect, (Rect{1330, 420, 270, 160}));
    EXPECT_EQ(screen->captured.back().first, 7U);
    EXPECT_EQ(capture({1610, 500}, {520, 160})->captureRect, (Rect{1600, 420, 270, 160}));
    EXPECT_EQ(screen->captured.back().first, 8U);
}

TEST_F(Live, GrowsToWholePoints) {
    EXPECT_EQ(capture({800.4, 500.7}, {520, 160})->captureRect, (Rect{540, 420, 521, 161}));
    // A display of 1600 pixels has 1066.7 points where each is one and a half.
    screen->list = {{7, {0, 0, 1066.7, 700}}};
    EXPECT_EQ(capture({1000, 300}, {520, 160})->captureRect, (Rect{740, 220, 327, 160}))
        << "after it is clipped";
}

TEST_F(Live, NeedsAPictureWithAnArea) {
    EXPECT_FALSE(capture({-5000, 500}, {520, 160})) << "far from the main display";
    EXPECT_FALSE(capture({800, 500}, {0, 160}));
    screen->fails = [](const Rect&) { return true; };
    EXPECT_FALSE(capture({800, 500}, {520, 160}));
    screen->fails = nullptr;
    screen->scale = 0;
    EXPECT_FALSE(capture({800, 500}, {520, 160})) << "a picture without pixels";
}

}  // namespace
}  // namespace velmora
