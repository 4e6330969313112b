// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <optional>
#include <vector>

#include "Velmora/TextCapture/DesktopFlip.h"
#include "Velmora/TextCapture/DetectedTextRecropper.h"
#include "Velmora/TextCapture/ExtractionServices.h"
#include "Velmora/TextCapture/ExtractionTrace.h"
#include "Velmora/TextCapture/ExtractorConfiguration.h"
#include "Velmora/TextCapture/OCRCacheEntry.h"
#include "Velmora/TextCapture/RegionRecognizer.h"
#include "Velmora/TextCapture/TextExtracting.h"
#include "Velmora/TextCapture/TracedAttempt.h"

namespace velmora {

/// Answers which text lies under a point of the screen and which of its characters the pointer is
/// on: the user's selection, else the text that the element under the pointer tells, else what can
/// be recognised on the screen, else the element's whole value.
class AccessibilityTextExtractor final
    : public TextExtracting,
      public std::enable_shared_from_this<AccessibilityTextExtractor> {
  public:
    /// Work that is still waiting when the last share goes away is answered with nothing.
    static std::shared_ptr<AccessibilityTextExtractor> create(
        ExtractionServices services, ExtractorConfiguration configuration = {});

    AccessibilityTextExtractor(const AccessibilityTextExtractor&) = delete;
    AccessibilityTextExtractor& operator=(const AccessibilityTextExtractor&) = delete;

    void extract(Point point, std::vector<Rect> excluding, Completion completion) override;

    /// The same on the calling thread, in practice the extraction queue. The point and the
    /// rectangles are in screen space. `trace` is told about every attempt.
    std::optional<TextProbe> extract(Point point, const std::vector<Rect>& excluding,
                                     ExtractionTrace* trace = nullptr);

    /// A point of screen space in capture space.
    Point accessibilityPoint(Point screenPoint) const;

    /// The greatest y of the primary screen, in points; what every flip counts from.
    double desktopHeight() const;

    const ExtractorConfiguration& configuration() const { return configuration_; }

  private:
    /// What one extraction goes by, in capture space.
    struct Query;

    AccessibilityTextExtractor(ExtractionServices services, ExtractorConfiguration configuration);

    /// Finds out where the word is that the probe hit.
    void placeWord(TextProbe& probe) const;
    DesktopFlip desktopFlip() const;
    std::optional<TextProbe> attempts(const Query& query, std::optional<ExtractionPath>& path);
    std::optional<TextProbe> selection(const Query& query) const;
    std::optional<TextProbe> parameterizedText(const Query& query) const;
    std::optional<TextProbe> recognition(const Query& query);
    std::optional<TextProbe> wholeValue(const Query& query) const;
    std::optional<RecognizedRegion> recognizedRegion(const Query& query);
    std::optional<RecognizedRegion> reusedRegion(const Query& query, double now) const;

    ExtractionServices services_;
    ExtractorConfiguration configuration_;
    RegionRecognizer recognizer_;
    DetectedTextRecropper recropper_;
    std::optional<OCRCacheEntry> ocrCache_;  ///< Touched on the extraction queue only.
};

}  // namespace velmora
