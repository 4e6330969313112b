// SPDX-License-Identifier: MIT
#include "Velmora/TextCapture/RecognizedLine.h"

#include <utility>

#include "Velmora/TextCapture/CheckedArithmetic.h"
#include "Velmora/TextCapture/CursorEstimation.h"
#include "Velmora/TextCapture/ElementCharacters.h"

namespace velmora {

RecognizedLine::RecognizedLine(const RegionGeometry& geometry, RecognizedText::Pointer candidate,
                               std::optional<Reference> reference, Point pointer,
                               const DesktopFlip& flip)
    : geometry_(geometry),
      candidate_(std::move(candidate)),
      reference_(std::move(reference)),
      pointer_(pointer),
      flip_(flip) {}

std::optional<Rect> RecognizedLine::resolvedAnchorRect(
    long long lineOffset, const std::optional<Rect>& ocrImageRect) const {
    const auto next = checkedSum(lineOffset, 1LL);
    const auto bounds = next ? referenceBounds(lineOffset, *next) : std::optional<Rect>();
    if (bounds && CursorEstimation::isPlausibleCharacterBounds(*bounds, pointer_)) {
        return flip_.flipped(*bounds);
    }
    if (!ocrImageRect) {
        return std::nullopt;
    }
    return flip_.flipped(geometry_.screenRect(*ocrImageRect));
}

std::optional<Rect> RecognizedLine::wordAnchorRect(long long start, long long end) const {
    if (start >= end) {
        return std::nullopt;
    }
    auto bounds = referenceBounds(start, end);
    if (!bounds || !CursorEstimation::isPlausibleWordBounds(*bounds, end - start, pointer_)) {
        bounds = recognizedBounds(start, end);
    }
    if (!bounds || !CursorEstimation::isPlausibleWordBounds(*bounds, end - start, pointer_)) {
        return std::nullopt;
    }
    return flip_.flipped(*bounds);
}

std::optional<Rect> RecognizedLine::referenceBounds(long long start, long long end) const {
    if (!reference_) {
        return std::nullopt;
    }
    const auto from = checkedSum(reference_->characterRange.start, start);
    const auto to = checkedSum(reference_->characterRange.start, end);
    if (!from || !to) {
        return std::nullopt;
    }
    return ElementCharacters::characterRangeBounds(*reference_->element, reference_->text, *from,
                                                   *to);
}

std::optional<Rect> RecognizedLine::recognizedBounds(long long start, long long end) const {
    const auto count = static_cast<long long>(CharacterText(candidate_->string()).count());
    if (start < 0 || end > count) {
        return std::nullopt;
    }
    const auto box =
        candidate_->boundingBox(static_cast<std::size_t>(start), static_cast<std::size_t>(end));
    if (!box || !box->isFinite()) {
        return std::nullopt;
    }
    return geometry_.screenRect(imageRectOfNormalizedBox(*box, geometry_.imageSize));
}

}  // namespace velmora
