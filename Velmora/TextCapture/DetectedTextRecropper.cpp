// SPDX-License-Identifier: MIT
#include "Velmora/TextCapture/DetectedTextRecropper.h"

#include <algorithm>
#include <cmath>
#include <utility>
#include <vector>

#include "Velmora/TextCapture/CursorEstimation.h"
#include "Velmora/TextCapture/LineTest.h"

namespace velmora {

namespace {

Size sizeOf(const Image& image) {
    return {static_cast<double>(image.width()), static_cast<double>(image.height())};
}

/// Adds the hits of one detected text to those of the texts before it.
void collectHits(const DetectedText& text, Size imageSize, Point point,
                 std::vector<OCRDetectedTextHit>& hits) {
    for (const Rect& characterBox : text.characterBoxes) {
        const Rect box = imageRectOfNormalizedBox(characterBox, imageSize);
        if (box.isFinite() && CursorEstimation::isDirectCharacterHit(box, point)) {
            hits.push_back({box, 0});
        }
    }
    if (!text.characterBoxes.empty() || !hits.empty()) {
        return;
    }
    const Rect line = imageRectOfNormalizedBox(text.boundingBox, imageSize);
    if (line.isFinite() && isOnLine(line, point)) {
        hits.push_back({line, std::hypot(point.x - line.midX(), point.y - line.midY())});
    }
}

bool isBetter(const OCRDetectedTextHit& a, const OCRDetectedTextHit& b) {
    if (a.score != b.score) {
        return a.score < b.score;
    }
    return a.rect.width * a.rect.height < b.rect.width * b.rect.height;
}

/// The pixels to cut out around a hit, whole and inside the picture.
Rect cropAround(const Rect& hit, Size imageSize, double minimumPadding, double maximumPadding) {
    constexpr double paddingRatio = 0.18;
    const double side = std::max(hit.width, hit.height);
    const double padding = std::min(std::max(side * paddingRatio, minimumPadding), maximumPadding);
    return hit.grownBy(padding).intersection({0, 0, imageSize.width, imageSize.height}).integral();
}

}  // namespace

DetectedTextRecropper::DetectedTextRecropper(std::shared_ptr<TextRectangleDetector> detector,
                                             const RegionRecognizer& recognizer,
                                             const ExtractorConfiguration& configuration)
    : detector_(std::move(detector)), recognizer_(recognizer), configuration_(configuration) {}

std::optional<OCRDetectedTextHit> DetectedTextRecropper::detectedTextHit(const Image& image,
                                                                         Point imagePoint) const {
    if (image.isEmpty()) {
        return std::nullopt;
    }
    const auto texts = detector_->detect(image);
    if (!texts) {
        return std::nullopt;
    }
    std::vector<OCRDetectedTextHit> hits;
    for (const DetectedText& text : *texts) {
        collectHits(text, sizeOf(image), imagePoint, hits);
    }
    const auto best = std::min_element(hits.begin(), hits.end(), isBetter);
    return best == hits.end() ? std::nullopt : std::optional(*best);
}

std::optional<RecognizedRegion> DetectedTextRecropper::recognizeDetectedTextRegion(
    const CapturedImage& capture, Point pointer) const {
    const Rect& shown = capture.captureRect;
    if (capture.image.isEmpty() || !shown.isFinite() || shown.isEmpty()) {
        return std::nullopt;
    }
    const Size size = sizeOf(capture.image);
    const Point imagePoint{(pointer.x - shown.minX()) * size.width / shown.width,
                           (pointer.y - shown.minY()) * size.height / shown.height};
    const auto hit = detectedTextHit(capture.image, imagePoint);
    if (!hit) {
        return std::nullopt;
    }
    const Rect crop =
        cropAround(hit->rect, size, configuration_.ocrDetectedTextRecropMinimumPadding,
                   configuration_.ocrDetectedTextRecropMaximumPadding);
    if (crop.isEmpty()) {
        return std::nullopt;
    }
    const Image cropped =
        capture.image.cropped(static_cast<int>(crop.x), static_cast<int>(crop.y),
                              static_cast<int>(crop.width), static_cast<int>(crop.height));
    const Rect cropRect{shown.minX() + crop.minX() / size.width * shown.width,
                        shown.minY() + crop.minY() / size.height * shown.height,
                        crop.width / size.width * shown.width,
                        crop.height / size.height * shown.height};
    auto region = recognizer_.recognizeEnhancedRegion(cropped, cropRect, pointer);
    if (!region) {
        return std::nullopt;
    }
    const Point regionPoint = region->imagePoint(pointer);
    const bool atPointer = std::any_of(
        region->observations.begin(), region->observations.end(),
        [&](const auto& observation) { return isOnLine(observation.rect, regionPoint); });
    return atPointer ? std::move(region) : std::nullopt;
}

}  // namespace velmora
