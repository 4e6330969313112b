// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <vector>

#include "Velmora/TextCapture/CapturedImage.h"
#include "Velmora/TextCapture/DetectedTextRecropper.h"
#include "Velmora/TextCapture/RecognizedRegion.h"
#include "Velmora/TextCapture/RegionRecognizer.h"
#include "Velmora/TextCapture/TracedAttempt.h"

namespace velmora {

/// Captures the screen around one point from small to large until a recognised region is good
/// enough. Made for one run; extraction queue.
class CaptureSequence {
  public:
    /// All of these must outlive the sequence.
    CaptureSequence(const CaptureFunction& capture, const RegionRecognizer& recognizer,
                    const DetectedTextRecropper& recropper,
                    const ExtractorConfiguration& configuration, const Tracing& tracing);

    /// Seconds after which nothing more is captured or looked at: whoever hovers next is waiting,
    /// and only a machine that has no time for us takes that long.
    static constexpr double timeLimit = 5;

    /// The first region that is accepted, else the last one with something usable at the pointer
    /// (capture space), else nothing.
    std::optional<RecognizedRegion> recognizeRegion(Point pointer);

  private:
    std::optional<RecognizedRegion> captured(const std::vector<Size>& sizes, Point pointer);
    std::optional<RecognizedRegion> capturedOnce(Size size, Point pointer);
    std::optional<RecognizedRegion> reexamined(Point pointer);
    std::optional<RecognizedRegion> accepted(const RecognizedRegion& region, Point pointer,
                                             TracedAttempt& attempt);
    bool isOver();

    const CaptureFunction& capture_;
    const RegionRecognizer& recognizer_;
    const DetectedTextRecropper& recropper_;
    const ExtractorConfiguration& configuration_;
    Tracing tracing_;
    std::vector<CapturedImage> captures_;
    std::optional<RecognizedRegion> lineFallbackRegion_;

    /// There is nobody to read. Who is loaded in the middle would see but the last, odd captures.
    bool isPointless_ = false;
    double start_ = 0;  ///< Uptime in seconds.
};

}  // namespace velmora
