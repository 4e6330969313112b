// SPDX-License-Identifier: MIT
#include "VelmoraCore/OCRTextCorrector.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "VelmoraCore/CanonicalText.h"
#include "VelmoraCore/CharacterKeys.h"
#include "VelmoraCore/CharacterText.h"

namespace velmora {
namespace {

constexpr std::size_t longestReference = 10000;

using Keys = std::vector<CharacterKey>;

Keys keysOf(const CharacterText& text, CharacterKeys& characterKeys) {
    Keys keys;
    keys.reserve(text.count());
    for (std::size_t index = 0; index < text.count(); ++index) {
        keys.push_back(characterKeys.add(text[index]));
    }
    return keys;
}

/// A window of a reference and in how many positions it agrees with the line.
struct Window {
    std::size_t reference = 0;
    std::size_t start = 0;
    std::size_t matches = 0;
};

/// How many places of each window agree with the line, for all windows at once: the inner loop runs
/// along the reference, so that the processor compares many windows in one step.
std::vector<std::uint16_t> matchCounts(const Keys& line, const Keys& reference) {
    std::vector<std::uint16_t> counts(reference.size() - line.size() + 1, 0);
    for (std::size_t place = 0; place < line.size(); ++place) {
        const CharacterKey key = line[place];
        const CharacterKey* const keys = reference.data() + place;
        for (std::size_t start = 0; start < counts.size(); ++start) {
            counts[start] = static_cast<std::uint16_t>(counts[start] + (keys[start] == key));
        }
    }
    return counts;
}

bool isClose(std::size_t length, std::size_t matches) {
    const std::size_t mismatches = length - matches;
    return length < 4 ? mismatches <= 1 : mismatches <= length / 4;
}

std::optional<OCRTextCorrector::Alignment> exactAlignment(std::string_view ocrLine,
                                                          const Keys& line,
                                                          const std::vector<Keys>& references) {
    for (std::size_t index = 0; index < references.size(); ++index) {
        const Keys& reference = references[index];
        const auto found =
            std::search(reference.begin(), reference.end(), line.begin(), line.end());
        if (found != reference.end()) {
            const auto start = static_cast<long long>(found - reference.begin());
            return OCRTextCorrector::Alignment{
                std::string(ocrLine),
                static_cast<long long>(index),
                {start, start + static_cast<long long>(line.size())}};
        }
    }
    return std::nullopt;
}

std::optional<Window> bestWindow(const Keys& line, const std::vector<Keys>& references) {
    std::optional<Window> best;
    for (std::size_t index = 0; index < references.size(); ++index) {
        const Keys& reference = references[index];
        if (reference.size() < line.size() || reference.size() > longestReference) {
            continue;
        }
        const std::vector<std::uint16_t> counts = matchCounts(line, reference);
        const auto top = std::max_element(counts.begin(), counts.end());
        if (!best || *top > best->matches) {
            best = {index, static_cast<std::size_t>(top - counts.begin()), *top};
        }
    }
    return best;
}

}  // namespace

bool OCRTextCorrector::Alignment::operator==(const Alignment& other) const {
    return referenceIndex == other.referenceIndex && characterRange == other.characterRange &&
           canonicallyEqual(text, other.text);
}

std::optional<OCRTextCorrector::Alignment> OCRTextCorrector::align(
    std::string_view ocrLine, std::span<const std::string> references) {
    CharacterKeys characterKeys;
    const Keys line = keysOf(CharacterText(ocrLine), characterKeys);
    if (line.empty() || references.empty()) {
        return std::nullopt;
    }
    std::vector<Keys> referenceKeys;
    referenceKeys.reserve(references.size());
    for (const std::string& reference : references) {
        referenceKeys.push_back(keysOf(CharacterText(reference), characterKeys));
    }
    if (auto exact = exactAlignment(ocrLine, line, referenceKeys)) {
        return exact;
    }
    const auto best = bestWindow(line, referenceKeys);
    if (!best || !isClose(line.size(), best->matches)) {
        return std::nullopt;
    }
    const CharacterText reference(references[best->reference]);
    const std::size_t end = best->start + line.size();
    return Alignment{std::string(reference.slice(best->start, end)),
                     static_cast<long long>(best->reference),
                     {static_cast<long long>(best->start), static_cast<long long>(end)}};
}

std::optional<std::string> OCRTextCorrector::correctedLine(
    std::string_view ocr, std::span<const std::string> references) {
    const auto alignment = align(ocr, references);
    if (!alignment || canonicallyEqual(alignment->text, ocr)) {
        return std::nullopt;
    }
    return alignment->text;
}

}  // namespace velmora
