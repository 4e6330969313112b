// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <optional>

#include "Velmora/Platform/TextRectangleDetector.h"
#include "Velmora/TextCapture/CapturedImage.h"
#include "Velmora/TextCapture/OCRDetectedTextHit.h"
#include "Velmora/TextCapture/RegionRecognizer.h"

namespace velmora {

/// Looks closer: finds the character or line under the pointer without reading it, cuts it out of
/// the capture with a margin, enhances it and reads it alone. Extraction queue.
class DetectedTextRecropper {
  public:
    DetectedTextRecropper(std::shared_ptr<TextRectangleDetector> detector,
                          const RegionRecognizer& recognizer,
                          const ExtractorConfiguration& configuration);

    /// The region of the cut-out when one of its lines is at the pointer (capture space).
    std::optional<RecognizedRegion> recognizeDetectedTextRegion(const CapturedImage& capture,
                                                                Point pointer) const;

    /// The best hit of the detector at a point (image pixels): characters before lines, smaller
    /// ones before larger.
    std::optional<OCRDetectedTextHit> detectedTextHit(const Image& image, Point imagePoint) const;

  private:
    std::shared_ptr<TextRectangleDetector> detector_;
    const RegionRecognizer& recognizer_;
    const ExtractorConfiguration& configuration_;
};

}  // namespace velmora
