// SPDX-License-Identifier: MIT
#include <memory>
#include <utility>
#include <vector>

#include "Tests/Support/Contracts/AccessibilityContract.h"
#include "Tests/Support/Contracts/ScreenCaptureContract.h"
#include "Tests/Support/Contracts/TextRecognizerContract.h"
#include "Tests/Support/Contracts/TextRectangleDetectorContract.h"
#include "Velmora/Platform/Recorded/RecordedAccessibility.h"
#include "Velmora/Platform/Recorded/RecordedScreenCapture.h"
#include "Velmora/Platform/Recorded/RecordedTextRecognizer.h"
#include "Velmora/Platform/Recorded/RecordedTextRectangleDetector.h"

namespace velmora {
namespace {

Image picture() {
    return {200, 100, std::vector<std::uint32_t>(20'000, 0xFFEEDDCC)};
}

/// A desktop of 800 × 500 points, two pixels a point, with one text.
std::shared_ptr<const Recording> recording() {
    auto made = std::make_shared<Recording>();
    made->displays = {{1, {0, 0, 800, 500}}};
    made->captures = {{1, {0, 0, 100, 50}, picture()}};
    Recording::Element element;
    element.value = std::optional<std::string>("你好中文");
    element.rangeForPosition = {{{65, 30}, Utf16Range{2, 1}}};
    element.stringForRange = {{{0, 4}, "你好中文"}};
    element.boundsForRange = {{{2, 1}, Rect{60, 20, 20, 20}}};
    Recording::Element leaf;
    leaf.parent = std::optional<Recording::ElementIndex>(1);
    made->elements = {leaf, element};
    made->hits = {{{65, 30}, 0}};
    const Recording::Candidate candidate{
        "中文", 0.99F, {Rect{0.1, 0.5, 0.1, 0.2}, Rect{0.2, 0.5, 0.1, 0.2}}};
    made->recognitions = {{Recording::Picture::of(picture()),
                           Point{30, 40},
                           {{{{0.1, 0.5, 0.2, 0.2}, {candidate, candidate}}}}}};
    made->detections = {
        {Recording::Picture::of(picture()),
         std::vector<Recording::Detected>{{{0.1, 0.5, 0.2, 0.2}, {{0.1, 0.5, 0.1, 0.2}}}}}};
    return made;
}

INSTANTIATE_TEST_SUITE_P(Recorded, ScreenCaptureContract,
                         ::testing::Values(ScreenCaptureSubject{
                             "recorded",
                             [] { return std::make_shared<RecordedScreenCapture>(recording()); },
                             {0, 0, 100, 50}}));

INSTANTIATE_TEST_SUITE_P(Recorded, TextRecognizerContract,
                         ::testing::Values(TextRecognizerSubject{
                             "recorded",
                             [] { return std::make_shared<RecordedTextRecognizer>(recording()); },
                             picture,
                             {30, 40},
                             "中文"}));

INSTANTIATE_TEST_SUITE_P(
    Recorded, TextRectangleDetectorContract,
    ::testing::Values(TextRectangleDetectorSubject{
        "recorded",
        [] { return std::make_shared<RecordedTextRectangleDetector>(recording()); },
        picture,
        {30, 40}}));

INSTANTIATE_TEST_SUITE_P(Recorded, AccessibilityContract,
                         ::testing::Values(AccessibilitySubject{
                             "recorded",
                             [] { return std::make_shared<RecordedAccessibility>(recording()); },
                             {65, 30},
                             "中文"}));

}  // namespace
}  // namespace velmora
