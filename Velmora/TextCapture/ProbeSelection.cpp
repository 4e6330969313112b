// SPDX-License-Identifier: MIT
#include "Velmora/TextCapture/ProbeSelection.h"

#include <algorithm>
#include <cmath>
#include <memory>
#include <utility>

#include "Velmora/TextCapture/CursorEstimation.h"
#include "Velmora/TextCapture/LineTest.h"
#include "Velmora/TextCapture/OCRCharacterHit.h"
#include "Velmora/TextCapture/RecognizedLine.h"
#include "VelmoraCore/OCRTextCorrector.h"

namespace velmora {

namespace {

/// The character of a line that the pointer is on, and its box in image pixels.
struct HoveredCharacter {
    long long offset = 0;
    std::optional<Rect> rect;
};

/// The character of a line without boxes, judged by the pointer's place along the line.
std::optional<HoveredCharacter> estimatedCharacter(const Rect& line, const std::string& displayText,
                                                   Point imagePoint) {
    constexpr double beside = 8;
    constexpr double aboveAndBelow = 10;
    if (!isOnLine(line, imagePoint)) {
        return std::nullopt;
    }
    const CharacterText text(displayText);
    const auto offset = CursorEstimation::estimatedCharacterOffset(
        text, imagePoint, line.grownBy(beside, aboveAndBelow), 0.0, false);
    if (!offset) {
        return std::nullopt;
    }
    return HoveredCharacter{*offset,
                            CursorEstimation::estimatedCharacterRect(line, text, *offset, 0.0)};
}

std::optional<HoveredCharacter> hoveredCharacter(const RecognizedRegion::Observation& line,
                                                 const std::string& displayText, Point imagePoint,
                                                 Size imageSize) {
    const RecognizedText& candidate = *line.candidate;
    if (const auto hit = OCRCharacterHit::cursorCharacterHit(candidate, displayText, line.rect,
                                                             imagePoint, imageSize)) {
        return HoveredCharacter{hit->offset, hit->rect};
    }
    // Where the recogniser has boxes and the pointer is on none, estimating would only be wrong.
    if (OCRCharacterHit::hasResolvableChineseCharacterBoxes(candidate, displayText, imageSize)) {
        return std::nullopt;
    }
    return estimatedCharacter(line.rect, displayText, imagePoint);
}

std::vector<std::string> textsOf(const std::vector<ReferenceSource>& sources) {
    std::vector<std::string> texts;
    texts.reserve(sources.size());
    for (const ReferenceSource& source : sources) {
        texts.push_back(source.text);
    }
    return texts;
}

}  // namespace

ProbeSelection::ProbeSelection(const RecognizedRegion& region, Point pointer,
                               std::vector<Rect> excluding,
                               const std::vector<ReferenceSource>& referenceSources,
                               const DesktopFlip& flip)
    : region_(region),
      pointer_(pointer),
      imagePoint_(region.imagePoint(pointer)),
      excluding_(std::move(excluding)),
      referenceSources_(referenceSources),
      references_(textsOf(referenceSources)),
      flip_(flip) {}

std::optional<TextProbe> ProbeSelection::selectProbe(TracedAttempt& attempt) const {
    const auto lines = orderedLines();
    for (const Observation* line : lines) {
        if (auto result = probe(*line)) {
            attempt.say([&] {
                return "character " + std::to_string(result->hoveredCharacterOffset) + " of \"" +
                       result->text + "\"";
            });
            return result;
        }
    }
    attempt.say([&] {
        return "the pointer is on no character of " + std::to_string(lines.size()) + " readings";
    });
    return std::nullopt;
}

bool ProbeSelection::isOwnPanel(const Observation& line) const {
    constexpr double margin = 4;
    if (line.rect.grownBy(margin).contains(imagePoint_)) {
        return false;
    }
    const Rect onScreen = region_.screenRect(line.rect);
    return std::any_of(excluding_.begin(), excluding_.end(),
                       [&](const Rect& panel) { return onScreen.intersects(panel); });
}

std::vector<const ProbeSelection::Observation*> ProbeSelection::orderedLines() const {
    std::vector<const Observation*> lines;
    for (const Observation& line : region_.observations) {
        if (!isOwnPanel(line)) {
            lines.push_back(&line);
        }
    }
    const auto distance = [this](const Observation* line) {
        return std::abs(line->rect.midY() - imagePoint_.y);
    };
    std::stable_sort(lines.begin(), lines.end(), [&](const Observation* a, const Observation* b) {
        return distance(a) != distance(b) ? distance(a) < distance(b)
                                          : a->rect.minX() < b->rect.minX();
    });
    return lines;
}

std::optional<TextProbe> ProbeSelection::probe(const Observation& line) const {
    const auto alignment = OCRTextCorrector::align(line.text, references_);
    const std::string& displayText = alignment ? alignment->text : line.text;
    const auto hovered = hoveredCharacter(line, displayText, imagePoint_, region_.imageSize);
    if (!hovered || displayText.empty()) {
        return std::nullopt;
    }
    std::optional<RecognizedLine::Reference> reference;
    if (alignment && alignment->referenceIndex >= 0 &&
        alignment->referenceIndex < static_cast<long long>(referenceSources_.size())) {
        const ReferenceSource& source =
            referenceSources_[static_cast<std::size_t>(alignment->referenceIndex)];
        reference = RecognizedLine::Reference{source.element, CharacterText(source.text),
                                              alignment->characterRange};
    }
    const auto recognized = std::make_shared<const RecognizedLine>(
        region_, line.candidate, std::move(reference), pointer_, flip_);
    return TextProbe{displayText, hovered->offset,
                     recognized->resolvedAnchorRect(hovered->offset, hovered->rect),
                     TextProbe::Source::hoveredText, [recognized](long long start, long long end) {
                         return recognized->wordAnchorRect(start, end);
                     }};
}

}  // namespace velmora
