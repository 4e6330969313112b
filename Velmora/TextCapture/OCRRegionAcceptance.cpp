// SPDX-License-Identifier: MIT
#include "Velmora/TextCapture/OCRRegionAcceptance.h"

#include <algorithm>

#include "Velmora/TextCapture/CursorEstimation.h"
#include "Velmora/TextCapture/LineTest.h"
#include "Velmora/TextCapture/OCRCharacterHit.h"
#include "VelmoraCore/CharacterText.h"

namespace velmora {

namespace {

constexpr double cropConstrainedFillRatio = 0.92;
constexpr float stableConfidence = 0.99F;
constexpr float usableConfidence = 0.5F;
constexpr long long usableChineseCharacters = 2;

/// What one reading says about the region.
enum class Finding {
    nothing,           ///< It is not at the pointer.
    accepted,          ///< Its character under the pointer can be relied on.
    character,         ///< Its character under the pointer is not certain enough.
    constrainedGlyph,  ///< That character is cut by the edge of the picture.
    resolvableLine,    ///< The pointer is on the line, but between its characters.
    line,              ///< The pointer is on the line, which has no boxes for its characters.
};

bool isCropConstrained(const OCRCharacterHit& hit, Size imageSize) {
    return imageSize.height > 0 && hit.rect.height / imageSize.height >= cropConstrainedFillRatio;
}

bool isUsableThoughConstrained(const RecognizedRegion::Observation& observation) {
    return CursorEstimation::chineseCharacterCount(CharacterText(observation.text)) >=
               usableChineseCharacters ||
           observation.candidate->confidence() >= usableConfidence;
}

Finding examine(const RecognizedRegion& region, const RecognizedRegion::Observation& observation,
                Point imagePoint, std::optional<RecognizedRegion>& lineFallbackRegion) {
    const RecognizedText& candidate = *observation.candidate;
    const auto hit = OCRCharacterHit::cursorCharacterHit(
        candidate, observation.text, observation.rect, imagePoint, region.imageSize);
    if (hit && isCropConstrained(*hit, region.imageSize)) {
        if (isUsableThoughConstrained(observation)) {
            lineFallbackRegion = region;
        }
        return Finding::constrainedGlyph;
    }
    if (hit) {
        lineFallbackRegion = region;
        return candidate.confidence() >= stableConfidence ? Finding::accepted : Finding::character;
    }
    if (!isOnLine(observation.rect, imagePoint)) {
        return Finding::nothing;
    }
    return OCRCharacterHit::hasResolvableChineseCharacterBoxes(candidate, observation.text,
                                                               region.imageSize)
               ? Finding::resolvableLine
               : Finding::line;
}

}  // namespace

std::optional<RecognizedRegion> OCRRegionAcceptance::acceptedOCRRegion(
    const RecognizedRegion& region, Point pointer,
    std::optional<RecognizedRegion>& lineFallbackRegion) {
    const Point imagePoint = region.imagePoint(pointer);
    bool cropConstrainedSeen = false;
    bool resolvableLineSeen = false;
    bool anythingSeen = false;
    for (const auto& observation : region.observations) {
        const Finding finding = examine(region, observation, imagePoint, lineFallbackRegion);
        if (finding == Finding::accepted) {
            return region;
        }
        anythingSeen = anythingSeen || finding != Finding::nothing;
        cropConstrainedSeen = cropConstrainedSeen || finding == Finding::constrainedGlyph;
        resolvableLineSeen = resolvableLineSeen || finding == Finding::resolvableLine;
    }
    if (!anythingSeen || resolvableLineSeen || cropConstrainedSeen) {
        return std::nullopt;
    }
    lineFallbackRegion = region;
    const bool stableLine = std::any_of(
        region.observations.begin(), region.observations.end(), [&](const auto& observation) {
            return isOnLine(observation.rect, imagePoint) &&
                   observation.candidate->confidence() >= stableConfidence;
        });
    return stableLine ? std::optional(region) : std::nullopt;
}

}  // namespace velmora
