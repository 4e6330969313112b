// SPDX-License-Identifier: MIT
#pragma once

#include <nlohmann/json.hpp>
#include <optional>
#include <string_view>
#include <vector>

#include "Velmora/Platform/TextRecognizer.h"
#include "Velmora/TextCapture/ExtractionPath.h"
#include "Velmora/TextCapture/RegionGeometry.h"
#include "Velmora/TextCapture/TextProbe.h"

namespace velmora {

/// {"x", "y", "width", "height"}, or null.
nlohmann::ordered_json rectJson(const std::optional<Rect>& rect);

/// "hoveredText" or "selectedText".
std::string_view name(TextProbe::Source source);

/// {"text", "hoveredCharacterOffset", "source", "anchorRect", "via"}; the anchor in native pixels,
/// origin at the top left.
nlohmann::ordered_json probeJson(const TextProbe& probe, const std::optional<Rect>& nativeAnchor,
                                 ExtractionPath via);

/// [{"box", "candidates": [{"text", "confidence", "characters": [box or null]}]}], the boxes in the
/// space of the region's `captureRect`.
nlohmann::ordered_json linesJson(const std::vector<TextObservation>& lines,
                                 const RegionGeometry& geometry);

/// The boxes of a reading's characters in that space.
std::vector<std::optional<Rect>> characterRects(const RecognizedText& candidate,
                                                const RegionGeometry& geometry);

/// The box of a line in that space.
Rect lineRect(const TextObservation& line, const RegionGeometry& geometry);

}  // namespace velmora
