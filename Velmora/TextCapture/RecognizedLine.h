// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "Velmora/TextCapture/DesktopFlip.h"
#include "Velmora/TextCapture/RecognizedRegion.h"
#include "Velmora/TextCapture/ReferenceSource.h"
#include "VelmoraCore/CharacterText.h"
#include "VelmoraCore/MatchedTextRange.h"

namespace velmora {

/// One recognised line as a probe carries it: its reading, the reference text that it was aligned
/// with, and where on the screen its characters stand. Holds all it needs by value, because it
/// lives on in the probe; the element and the desktop's height are read when it is asked.
class RecognizedLine {
  public:
    /// The reference text in whose characters the line was found.
    struct Reference {
        AccessibilityElement::Pointer element;
        CharacterText text;
        MatchedTextRange characterRange;
    };

    RecognizedLine(const RegionGeometry& geometry, RecognizedText::Pointer candidate,
                   std::optional<Reference> reference, Point pointer, const DesktopFlip& flip);

    /// Where one character stands (screen space): exactly, if the reference's element can tell,
    /// else where `ocrImageRect` (image pixels) says; nothing without either.
    std::optional<Rect> resolvedAnchorRect(long long lineOffset,
                                           const std::optional<Rect>& ocrImageRect) const;

    /// Where the characters start..<end stand (screen space): by the reference's element, else by
    /// the recogniser's box; nothing where neither is believable. Any thread that may read the
    /// element; in practice the extraction queue.
    std::optional<Rect> wordAnchorRect(long long start, long long end) const;

  private:
    std::optional<Rect> referenceBounds(long long start, long long end) const;
    std::optional<Rect> recognizedBounds(long long start, long long end) const;

    RegionGeometry geometry_;
    RecognizedText::Pointer candidate_;
    std::optional<Reference> reference_;
    Point pointer_;
    DesktopFlip flip_;
};

}  // namespace velmora
