// SPDX-License-Identifier: MIT
#include "Velmora/Platform/Recorded/Recording.h"

#include <gtest/gtest.h>

#include <fstream>
#include <limits>
#include <string>

#include "Tests/Support/TemporaryFolder.h"
#include "Tests/Support/TextCapture/ExtractionStage.h"
#include "Velmora/Platform/Recorded/RecordedAccessibility.h"
#include "Velmora/Platform/Recorded/RecordedScreenCapture.h"
#include "Velmora/Platform/Recorded/RecordedScreens.h"
#include "Velmora/Platform/Recorded/RecordedTextRecognizer.h"
#include "Velmora/Platform/Recorded/RecordedTextRectangleDetector.h"
#include "Velmora/Platform/Recorded/Recorder.h"
#include "Velmora/Platform/Recorded/RecordingAccessibility.h"
#include "Velmora/Platform/Recorded/RecordingFolder.h"
#include "Velmora/Platform/Recorded/RecordingScreenCapture.h"
#include "Velmora/Platform/Recorded/RecordingText.h"
#include "Velmora/Platform/Recorded/RecordingTextRecognizer.h"
#include "Velmora/Platform/Recorded/RecordingTextRectangleDetector.h"

namespace velmora {
namespace {

constexpr Point pointer{410, 420};

/// Records a probe, writes it, reads it back and plays it.
class RoundTrip : public ::testing::Test {
  protected:
    ExtractionServices recordingServices() {
        ExtractionServices services = stage.services();
        services.accessibility =
            std::make_shared<RecordingAccessibility>(stage.accessibility, recorder);
        services.screenCapture = std::make_shared<RecordingScreenCapture>(stage.screen, recorder);
        services.textRecognizer =
            std::make_shared<RecordingTextRecognizer>(stage.recognizer, recorder);
        services.textRectangleDetector =
            std::make_shared<RecordingTextRectangleDetector>(stage.detector, recorder);
        recorder->change([](Recording& made) {
            made.screens = {{1, {0, 0, 1600, 1000}, 1, {0, 0, 1600, 1000}}};
        });
        return services;
    }

    std::shared_ptr<AccessibilityTextExtractor> player() {
        EXPECT_EQ(RecordingFolder::save(recorder->recording(), folder.path()), std::nullopt);
        auto loaded = RecordingFolder::load(folder.path());
        EXPECT_EQ(loaded.error, "");
        EXPECT_TRUE(loaded.recording);
        recording = loaded.recording;
        ExtractionServices services = stage.services();
        services.accessibility = std::make_shared<RecordedAccessibility>(recording);
        services.screenCapture = std::make_shared<RecordedScreenCapture>(recording);
        services.textRecognizer = std::make_shared<RecordedTextRecognizer>(recording);
        services.textRectangleDetector = std::make_shared<RecordedTextRectangleDetector>(recording);
        services.screens = std::make_shared<RecordedScreens>(*recording);
        return AccessibilityTextExtractor::create(services);
    }

    static void expectSame(const std::optional<TextProbe>& a, const std::optional<TextProbe>& b) {
        ASSERT_TRUE(a);
        ASSERT_TRUE(b);
        EXPECT_EQ(a->text, b->text);
        EXPECT_EQ(a->hoveredCharacterOffset, b->hoveredCharacterOffset);
        EXPECT_EQ(a->source, b->source);
        EXPECT_EQ(a->anchorRect, b->anchorRect);
    }

    testing::TemporaryFolder folder;
    ExtractionStage stage;
    std::shared_ptr<Recorder> recorder = std::make_shared<Recorder>();
    std::shared_ptr<const Recording> recording;
};

TEST_F(RoundTrip, PlaysTextFromAnElement) {
    const auto element = FakeElement::line("中文\U0001F600很好", {380, 570}, {20, 20});
    element->parentElement = FakeElement::make();
    stage.accessibility->element = element;
    stage.accessibility->focused = element;
    const auto seen = AccessibilityTextExtractor::create(recordingServices())->extract(pointer, {});
    ASSERT_TRUE(seen);
    const auto word = seen->rangeAnchorRect(0, 2);
    ASSERT_TRUE(word);
    const auto extractor = player();
    const auto played = extractor->extract(pointer, {});
    expectSame(seen, played);
    EXPECT_EQ(played->rangeAnchorRect(0, 2), word);
    EXPECT_FALSE(played->rangeAnchorRect(1, 3)) << "nobody asked for that";
    EXPECT_EQ(recording->elements.size(), 2U) << "the focused element is the one under the pointer";
    EXPECT_FALSE(extractor->extract({5, 5}, {}));
}

TEST_F(RoundTrip, PlaysASelection) {
    const auto element = FakeElement::line("中文很好", {380, 570}, {20, 20});
    element->selection = "文很";
    element->selectionRange = Utf16Range{1, 2};
    stage.accessibility->element = element;
    const auto seen = AccessibilityTextExtractor::create(recordingServices())->extract(pointer, {});
    expectSame(seen, player()->extract(pointer, {}));
}

TEST_F(RoundTrip, PlaysRecognisedText) {
    stage.accessibility->element = FakeElement::make();
    stage.recognizer->onRecognize = [](const Image& image) {
        const Size size{static_cast<double>(image.width()), static_cast<double>(image.height())};
        return std::vector<TextObservation>{
            FakeText::line("屏幕文字", image.width() == 520 ? 0.9F : 0.995F,
                           {size.width / 2 - 30, size.height / 2 - 10, 80, 20}, size)};
    };
    const auto seen = AccessibilityTextExtractor::create(recordingServices())->extract(pointer, {});
    const auto extractor = player();
    expectSame(seen, extractor->extract(pointer, {}));
    EXPECT_EQ(recording->captures.size(), 4U);
    ASSERT_TRUE(recording->captures[0].image);
    EXPECT_EQ(recording->captures[0].image->row(0)[0], 0xFFFFFFFFU);
    EXPECT_TRUE(std::filesystem::exists(folder / "capture-3.png"));
}

TEST_F(RoundTrip, PlaysTheCloserLook) {
    stage.accessibility->element = FakeElement::make();
    stage.detector->onDetect = [](const Image& image) {
        const Size size{static_cast<double>(image.width()), static_cast<double>(image.height())};
        const Rect box =
            FakeText::normalized({size.width / 2 - 10, size.height / 2 - 10, 20, 20}, size);
        return std::vector<DetectedText>{{box, {box}}};
    };
    stage.recognizer->onRecognize = [](const Image& image) {
        const Size size{static_cast<double>(image.width()), static_cast<double>(image.height())};
        return image.width() > 60 && image.width() < 100
                   ? std::vector<TextObservation>{FakeText::line(
                         "中", 0.995F, {0, 0, size.width, size.height / 2 + 9}, size)}
                   : std::vector<TextObservation>();
    };
    const auto seen = AccessibilityTextExtractor::create(recordingServices())->extract(pointer, {});
    expectSame(seen, player()->extract(pointer, {}));
    EXPECT_FALSE(recording->detections.empty());
}

TEST_F(RoundTrip, KeepsWhatIsHostileWithinBounds) {
    const auto element = FakeElement::make();
    element->valueText = std::string(200'000'000, 'a');
    element->titleText = std::string("\xFF\xFE broken \0 end", 15);
    element->origin = Point{std::numeric_limits<double>::quiet_NaN(), 0};
    element->extent = Size{std::numeric_limits<double>::infinity(), 0};
    element->parentElement = element;
    element->onRangeForPosition = [](Point) {
        return Utf16Range{std::numeric_limits<std::int64_t>::max(),
                          std::numeric_limits<std::int64_t>::min()};
    };
    element->onBoundsForRange = [](Utf16Range) {
        return Rect{0, 0, std::numeric_limits<double>::infinity(), 1};
    };
    stage.accessibility->element = element;
    const auto services = recordingServices();
    EXPECT_FALSE(AccessibilityTextExtractor::create(services)->extract(pointer, {}));
    const auto again = services.accessibility->elementAtPosition({410, 580});
    again->value();
    again->title();
    again->position();
    again->size();
    EXPECT_FALSE(player()->extract(pointer, {}));
    EXPECT_TRUE(recording->truncated);
    EXPECT_EQ(recording->elements.size(), 1U);
    element->parentElement = nullptr;
}

TEST_F(RoundTrip, IsForTheUserAlone) {
    player();
    const auto permissions = std::filesystem::status(folder / "recording.json").permissions();
    EXPECT_EQ(permissions & std::filesystem::perms::mask,
              std::filesystem::perms::owner_read | std::filesystem::perms::owner_write);
}

TEST(RecordingFolders, TellWhyTheyCannotBeUsed) {
    const testing::TemporaryFolder folder;
    EXPECT_EQ(RecordingFolder::load(folder.path()).error,
              (folder / "recording.json").string() + ": cannot be read");
    std::ofstream(folder / "recording.json") << "{}";
    EXPECT_EQ(RecordingFolder::load(folder.path()).error,
              (folder / "recording.json").string() + ": not a recording");
    Recording recording;
    recording.captures.push_back({1, {0, 0, 10, 10}, Image(1, 1, {0xFF112233})});
    ASSERT_FALSE(RecordingFolder::save(recording, folder.path()));
    EXPECT_TRUE(RecordingFolder::load(folder.path()).recording);
    std::ofstream(folder / "capture-0.png") << "no picture";
    EXPECT_FALSE(RecordingFolder::load(folder.path()).recording);
    std::filesystem::remove(folder / "capture-0.png");
    EXPECT_FALSE(RecordingFolder::load(folder.path()).recording);
    EXPECT_TRUE(RecordingFolder::save(recording, "/proc/nowhere"));
}

TEST(RecordingTexts, AreReadStrictly) {
    const std::string good = recordingText(Recording());
    EXPECT_TRUE(parseRecording(good));
    for (const char* bad : {"", "[]", "null", "{", "{\"format\":\"velmora-recording\"}",
                            "{\"format\":\"other\",\"version\":1}"}) {
        EXPECT_FALSE(parseRecording(bad)) << bad;
    }
    const auto without = [&](const std::string& part, const std::string& instead) {
        std::string text = good;
        const auto at = text.find(part);
        EXPECT_NE(at, std::string::npos) << part;
        return text.replace(at, part.size(), instead);
    };
    EXPECT_FALSE(parseRecording(without("\"version\": 1", "\"version\": 2")));
    EXPECT_FALSE(parseRecording(without("\"elements\": []", "\"elements\": [{\"parent\":1}]")));
    EXPECT_TRUE(parseRecording(without("\"elements\": []", "\"elements\": [{\"parent\":0}]")));
    EXPECT_FALSE(parseRecording(without("\"elements\": []", "\"elements\": [{\"parent\":-1}]")));
    EXPECT_FALSE(parseRecording(without("\"elements\": []", "\"elements\": [{\"value\":7}]")));
    EXPECT_FALSE(parseRecording(
        without("\"elements\": []", "\"elements\": [{\"position\":{\"x\":1e999,\"y\":0}}]")));
    EXPECT_FALSE(parseRecording(without("\"captures\": []", "\"captures\": [[[[[[[[[[[[[[[[")));
    std::string many = "\"elements\": [{}";
    for (int count = 0; count < 64; ++count) {
        many += ",{}";
    }
    EXPECT_FALSE(parseRecording(without("\"elements\": []", many + "]")));
}

TEST(RecordedCaptures, AreCutOutOfLargerOnes) {
    Recording recording;
    std::vector<std::uint32_t> pixels(400);
    for (std::uint32_t index = 0; index < 400; ++index) {
        pixels[index] = index;
    }
    recording.captures.push_back({1, {100, 100, 10, 10}, Image(20, 20, pixels)});
    recording.captures.push_back({1, {200, 100, 10, 10}, std::nullopt});
    RecordedScreenCapture screen(std::make_shared<const Recording>(recording));
    EXPECT_EQ(screen.capture(1, {100, 100, 10, 10})->width(), 20);
    const auto part = screen.capture(1, {102, 103, 4, 5});
    ASSERT_TRUE(part);
    EXPECT_EQ(part->width(), 8);
    EXPECT_EQ(part->height(), 10);
    EXPECT_EQ(part->row(0)[0], 6U * 20 + 4);
    EXPECT_FALSE(screen.capture(1, {99, 100, 5, 5}));
    EXPECT_FALSE(screen.capture(1, {200, 100, 10, 10})) << "that failed";
    EXPECT_FALSE(screen.capture(2, {100, 100, 10, 10}));
}

}  // namespace
}  // namespace velmora
