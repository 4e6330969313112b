// SPDX-License-Identifier: MIT
#include "Velmora/CommandLine/Application/ProbeText.h"

#include <cmath>

#include "Velmora/CommandLine/Core/ResultText.h"
#include "Velmora/CommandLine/Core/TextLayout.h"
#include "VelmoraCore/CharacterText.h"

namespace velmora {

namespace {

std::string placeText(const Rect& rect) {
    const auto whole = [](double value) { return std::to_string(std::llround(value)); };
    return " at " + whole(rect.x) + "," + whole(rect.y) + ", " + whole(rect.width) + " x " +
           whole(rect.height);
}

}  // namespace

std::string probeText(const TextProbe& probe, const std::optional<Rect>& nativeAnchor,
                      ExtractionPath via, const LookupEngine& engine, const TextStyle& style) {
    const CharacterText text(probe.text);
    const auto offset = static_cast<std::size_t>(probe.hoveredCharacterOffset);
    std::string about = "character " + std::to_string(offset) + " " +
                        printable(std::string(text.slice(offset, offset + 1)));
    if (nativeAnchor && nativeAnchor->isFinite()) {
        about += placeText(*nativeAnchor);
    }
    about += ", by " + std::string(name(via));
    std::string result = printable(probe.text) + "\n" + style.quiet(about) + "\n";
    if (probe.source == TextProbe::Source::selectedText) {
        return result + resultsText(engine.lookups(text.text()), style);
    }
    if (const auto match = engine.lookup(text, probe.hoveredCharacterOffset)) {
        result += resultText(*match, style);
    }
    return result;
}

}  // namespace velmora
