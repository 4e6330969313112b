// SPDX-License-Identifier: MIT
#include "Velmora/CommandLine/Application/ProbeJson.h"

#include <cmath>

#include "Velmora/TextCapture/OCRCharacterHit.h"
#include "VelmoraCore/CharacterText.h"

namespace velmora {

namespace {

/// As many digits as a 32-bit number has, so that 0.99 is not printed as 0.9900000095.
double shortest(float value) {
    return std::round(static_cast<double>(value) * 1e6) / 1e6;
}

nlohmann::ordered_json candidateJson(const RecognizedText& candidate,
                                     const RegionGeometry& geometry) {
    auto characters = nlohmann::ordered_json::array();
    for (const auto& rect : characterRects(candidate, geometry)) {
        characters.push_back(rectJson(rect));
    }
    return {{"text", candidate.string()},
            {"confidence", shortest(candidate.confidence())},
            {"characters", std::move(characters)}};
}

}  // namespace

nlohmann::ordered_json rectJson(const std::optional<Rect>& rect) {
    if (!rect || !rect->isFinite()) {
        return nullptr;
    }
    return {{"x", rect->x}, {"y", rect->y}, {"width", rect->width}, {"height", rect->height}};
}

std::string_view name(TextProbe::Source source) {
    return source == TextProbe::Source::selectedText ? "selectedText" : "hoveredText";
}

nlohmann::ordered_json probeJson(const TextProbe& probe, const std::optional<Rect>& nativeAnchor,
                                 ExtractionPath via) {
    return {{"text", probe.text},
            {"hoveredCharacterOffset", probe.hoveredCharacterOffset},
            {"source", name(probe.source)},
            {"anchorRect", rectJson(nativeAnchor)},
            {"via", name(via)}};
}

nlohmann::ordered_json linesJson(const std::vector<TextObservation>& lines,
                                 const RegionGeometry& geometry) {
    auto array = nlohmann::ordered_json::array();
    for (const TextObservation& line : lines) {
        auto candidates = nlohmann::ordered_json::array();
        for (const auto& candidate : line.candidates) {
            candidates.push_back(candidateJson(*candidate, geometry));
        }
        array.push_back(
            {{"box", rectJson(lineRect(line, geometry))}, {"candidates", std::move(candidates)}});
    }
    return array;
}

std::vector<std::optional<Rect>> characterRects(const RecognizedText& candidate,
                                                const RegionGeometry& geometry) {
    const CharacterText text(candidate.string());
    std::vector<std::optional<Rect>> rects;
    for (std::size_t index = 0; index < text.count(); ++index) {
        const auto rect = OCRCharacterHit::characterImageRect(
            candidate, text, static_cast<long long>(index), geometry.imageSize);
        rects.push_back(rect ? std::optional(geometry.screenRect(*rect)) : std::nullopt);
    }
    return rects;
}

Rect lineRect(const TextObservation& line, const RegionGeometry& geometry) {
    return geometry.screenRect(imageRectOfNormalizedBox(line.boundingBox, geometry.imageSize));
}

}  // namespace velmora
