// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include "Tests/Support/TemporaryFolder.h"
#include "Velmora/Platform/Loader/PlatformLoader.h"
#include "Velmora/Platform/Recorded/RecordingFolder.h"

namespace velmora {
namespace {

/// A screen of 800 × 600 with one element, on which "中" was read.
Recording someRecording() {
    Recording recording;
    recording.pointer = Point{400, 300};
    recording.screens = {{1, {0, 0, 800, 600}, 1, {0, 0, 800, 600}}};
    recording.displays = {{1, {0, 0, 800, 600}}};
    recording.elements.resize(1);
    recording.hits = {{Point{400, 300}, std::size_t{0}}};
    const Image picture(4, 2, std::vector<std::uint32_t>(8, 0xFFFFFFFF));
    recording.captures = {{1, {398, 299, 4, 2}, picture}};
    recording.recognitions = {
        {Recording::Picture::of(picture), Point{2, 1},
         std::vector<Recording::Line>{{{0, 0, 1, 1}, {{"中", 0.995F, {Rect{0, 0, 0.5, 1}}}}}}}};
    recording.detections = {{Recording::Picture::of(picture),
                             std::vector<Recording::Detected>{{{0, 0, 1, 1}, {{0, 0, 0.5, 1}}}}}};
    return recording;
}

TEST(RecordedPlatform, AnswersAsTheDesktopDidThen) {
    const testing::TemporaryFolder folder;
    ASSERT_EQ(RecordingFolder::save(someRecording(), folder.path()), std::nullopt);
    const PlatformChoice choice{PlatformChoice::Kind::recorded, folder.path()};
    EXPECT_EQ(preparePlatform(choice), std::nullopt);
    const PlatformBackends backends = loadPlatform(choice);

    ASSERT_EQ(backends.screens->all().size(), 1U);
    EXPECT_EQ(backends.screens->all()[0].frame, (Rect{0, 0, 800, 600}));
    EXPECT_EQ(backends.screenGeometry->current().displays().size(), 1U);
    EXPECT_NE(backends.accessibility->elementAtPosition({400, 300}), nullptr);
    EXPECT_EQ(backends.accessibility->elementAtPosition({1, 1}), nullptr);
    const auto picture = backends.screenCapture->capture(1, {398, 299, 4, 2});
    ASSERT_TRUE(picture);
    EXPECT_FALSE(backends.screenCapture->capture(1, {0, 0, 4, 2}));
    const auto lines = backends.textRecognizer->recognize(*picture, Point{2, 1}, 3);
    ASSERT_TRUE(lines);
    EXPECT_EQ(lines->at(0).candidates.at(0)->string(), "中");
    const auto texts = backends.textRectangleDetector->detect(*picture);
    ASSERT_TRUE(texts);
    EXPECT_EQ(texts->at(0).characterBoxes.size(), 1U);
    // What was not part of it is told to be unavailable, and nothing has to be waited for.
    EXPECT_TRUE(backends.waitForRecognition(std::chrono::milliseconds(0)));
    EXPECT_EQ(backends.events->addGlobalMonitor(EventMask::mouseMoved, {}), 0U);
}

TEST(RecordedPlatform, WithoutItsRecordingHasNothing) {
    const testing::TemporaryFolder folder;
    const PlatformBackends backends = loadPlatform({PlatformChoice::Kind::recorded, folder.path()});
    EXPECT_TRUE(backends.screens->all().empty());
    EXPECT_EQ(backends.accessibility->elementAtPosition({400, 300}), nullptr);
    EXPECT_EQ(backends.textRecognizer->status().stage, RecognitionStatus::Stage::unavailable);
}

}  // namespace
}  // namespace velmora
