// SPDX-License-Identifier: MIT
#include "Velmora/TextCapture/RegionRecognizer.h"

#include <cmath>
#include <utility>

#include "Velmora/TextCapture/CursorEstimation.h"
#include "Velmora/TextCapture/ImageEnhancement.h"
#include "VelmoraCore/CharacterText.h"

namespace velmora {

namespace {

RegionGeometry geometryOf(const Image& image, const Rect& captureRect) {
    const Size size{static_cast<double>(image.width()), static_cast<double>(image.height())};
    return {captureRect, size, size.width / captureRect.width, size.height / captureRect.height};
}

/// Collects the trusted readings of the region's lines.
void collectObservations(RecognizedRegion& region, float isolatedGlyphMinConfidence,
                         int candidateLimit) {
    region.observations.clear();
    for (std::size_t line = 0; line < region.lines.size(); ++line) {
        const TextObservation& observation = region.lines[line];
        if (!observation.boundingBox.isFinite()) {
            continue;
        }
        const Rect rect = imageRectOfNormalizedBox(observation.boundingBox, region.imageSize);
        int asked = 0;
        for (const RecognizedText::Pointer& candidate : observation.candidates) {
            if (++asked > candidateLimit) {
                break;
            }
            if (candidate != nullptr && RegionRecognizer::isConfidentChineseObservation(
                                            *candidate, isolatedGlyphMinConfidence)) {
                region.observations.push_back({candidate, candidate->string(), rect, line});
            }
        }
    }
}

}  // namespace

RegionRecognizer::RegionRecognizer(std::shared_ptr<TextRecognizer> recognizer,
                                   const ExtractorConfiguration& configuration)
    : recognizer_(std::move(recognizer)), configuration_(configuration) {}

bool RegionRecognizer::isConfidentChineseObservation(const RecognizedText& candidate,
                                                     float isolatedGlyphMinConfidence) {
    constexpr float withoutChinese = 0.4F;
    constexpr float withSeveral = 0.3F;
    switch (CursorEstimation::chineseCharacterCount(CharacterText(candidate.string()))) {
        case 0:
            return candidate.confidence() >= withoutChinese;
        case 1:
            return candidate.confidence() >= isolatedGlyphMinConfidence;
        default:
            return candidate.confidence() >= withSeveral;
    }
}

std::optional<RecognizedRegion> RegionRecognizer::recognizeRegion(const Image& image,
                                                                  const Rect& captureRect,
                                                                  float isolatedGlyphMinConfidence,
                                                                  Point pointer) const {
    if (image.isEmpty() || !captureRect.isFinite() || captureRect.isEmpty()) {
        return std::nullopt;
    }
    RecognizedRegion region{geometryOf(image, captureRect), {}, {}, image};
    auto lines =
        recognizer_->recognize(image, region.imagePoint(pointer), configuration_.ocrCandidateLimit);
    if (!lines) {
        return std::nullopt;
    }
    region.lines = std::move(*lines);
    collectObservations(region, isolatedGlyphMinConfidence, configuration_.ocrCandidateLimit);
    return region;
}

std::vector<Image> RegionRecognizer::enhancedOCRImages(const Image& image) const {
    std::vector<Image> images;
    const double factor = configuration_.ocrEnhancedUpscaleFactor;
    if (auto upscaled = ImageEnhancement::upscaledImage(image, factor)) {
        images.push_back(std::move(*upscaled));
    }
    if (const auto contrast = ImageEnhancement::grayscaleContrastImage(image)) {
        images.push_back(*contrast);
        if (auto upscaled = ImageEnhancement::upscaledImage(*contrast, factor)) {
            images.push_back(std::move(*upscaled));
        }
    }
    return images;
}

std::optional<RecognizedRegion> RegionRecognizer::recognizeEnhancedRegion(const Image& image,
                                                                          const Rect& captureRect,
                                                                          Point pointer) const {
    const float isolated = configuration_.ocrDetectedTextIsolatedGlyphMinConfidence;
    auto region = recognizeRegion(image, captureRect, isolated, pointer);
    if (region && !region->observations.empty()) {
        return region;
    }
    for (const Image& enhanced : enhancedOCRImages(image)) {
        region = recognizeRegion(enhanced, captureRect, isolated, pointer);
        if (region && !region->observations.empty()) {
            return region;
        }
    }
    return std::nullopt;
}

std::optional<RecognizedRegion> RegionRecognizer::verifiedRegion(const RecognizedRegion& region,
                                                                 Point pointer) const {
    auto lines = recognizer_->verify(region.image, region.lines, region.imagePoint(pointer),
                                     configuration_.ocrCandidateLimit);
    if (!lines && region.image.isEmpty()) {
        return std::nullopt;
    }
    RecognizedRegion verified = region;
    verified.lines = lines ? std::move(*lines) : std::vector<TextObservation>();
    collectObservations(verified, configuration_.ocrIsolatedGlyphMinConfidence,
                        configuration_.ocrCandidateLimit);
    return verified;
}

}  // namespace velmora
