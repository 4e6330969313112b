// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <optional>
#include <vector>

#include "Velmora/Platform/TextRecognizer.h"
#include "Velmora/TextCapture/ExtractorConfiguration.h"
#include "Velmora/TextCapture/RecognizedRegion.h"

namespace velmora {

/// Turns pictures into recognised regions. The pointer (capture space) goes to the recogniser as a
/// hint. Extraction queue.
class RegionRecognizer {
  public:
    RegionRecognizer(std::shared_ptr<TextRecognizer> recognizer,
                     const ExtractorConfiguration& configuration);

    /// The trusted readings of a picture that shows `captureRect`; nothing where the picture or
    /// the rectangle is empty or recognition failed. The list of readings may be empty.
    std::optional<RecognizedRegion> recognizeRegion(const Image& image, const Rect& captureRect,
                                                    float isolatedGlyphMinConfidence,
                                                    Point pointer) const;

    /// The same, and where nothing is found, of the enhanced pictures one after the other; nothing
    /// unless one of them has a reading.
    std::optional<RecognizedRegion> recognizeEnhancedRegion(const Image& image,
                                                            const Rect& captureRect,
                                                            Point pointer) const;

    /// A region recognised for another place of the pointer, with its lines verified at this one;
    /// nothing where that takes the picture and it was not kept.
    std::optional<RecognizedRegion> verifiedRegion(const RecognizedRegion& region,
                                                   Point pointer) const;

    /// How far the recogniser is.
    RecognitionStatus status() const { return recognizer_->status(); }

    /// The picture enlarged, its contrast raised, and both; those that could be made.
    std::vector<Image> enhancedOCRImages(const Image& image) const;

    /// Whether a reading is trusted: from 0.3 with two or more Chinese characters, from the given
    /// confidence with one, from 0.4 with none.
    static bool isConfidentChineseObservation(const RecognizedText& candidate,
                                              float isolatedGlyphMinConfidence);

  private:
    std::shared_ptr<TextRecognizer> recognizer_;
    const ExtractorConfiguration& configuration_;
};

}  // namespace velmora
