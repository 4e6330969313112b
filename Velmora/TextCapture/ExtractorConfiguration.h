// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "Velmora/TextCapture/CapturedImage.h"
#include "VelmoraCore/MatchedTextRange.h"

namespace velmora {

/// How an extractor works. Fixed once the extractor is made.
struct ExtractorConfiguration {
    CaptureFunction capture;                      ///< Empty stands for the live screen.
    std::optional<double> desktopHeightOverride;  ///< Replaces the measured desktop height.

    /// Tells which characters of a text the word at an offset takes. Where it stands is asked for
    /// right after the text then, on the extraction queue, so that whoever shows the word waits for
    /// nobody. Called on that queue; empty: a word's place is asked for when it is wanted.
    std::function<std::optional<MatchedTextRange>(const std::string& text, long long offset)>
        wordAt;

    /// UTF-16 units read before the hovered position; the whole window is at most twice as long.
    std::int64_t contextRadius = 24;

    // The captures around the pointer, in points, in the order in which they are tried.
    std::vector<Size> ocrCaptureSizes = {{520, 160}, {520, 240}, {520, 280}};
    std::vector<Size> ocrFallbackCaptureSizes = {{700, 360}, {900, 500}, {1200, 700}};
    std::vector<Size> ocrFullContextCaptureSizes = {{3000, 3000}};

    /// Share of the picture's height from which on a character counts as cut by the capture.
    double ocrCropConstrainedGlyphFillRatio = 0.92;

    // Padding around a detected text box, as a share of its longer side and in pixels.
    double ocrDetectedTextRecropPaddingRatio = 0.18;
    double ocrDetectedTextRecropMinimumPadding = 8;
    double ocrDetectedTextRecropMaximumPadding = 40;

    double ocrEnhancedUpscaleFactor = 2.0;

    // The least confidence of a reading without Chinese characters, with several, with one.
    float ocrMinimumConfidence = 0.4F;
    float ocrMultiCharacterMinConfidence = 0.3F;
    int ocrCandidateLimit = 3;  ///< Readings asked for each line.
    float ocrIsolatedGlyphMinConfidence = 0.5F;
    float ocrDetectedTextIsolatedGlyphMinConfidence = 0.5F;

    /// From this confidence on a character under the pointer is taken at once.
    float ocrStableCursorHitConfidence = 0.99F;

    double ocrCacheTTL = 1.5;        ///< Seconds for which a recognised region may be reused.
    double ocrCacheReuseInset = 64;  ///< Points that the pointer must keep from its edges.
};

}  // namespace velmora
