// SPDX-License-Identifier: MIT
#include "VelmoraCore/OCRTextCorrector.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <unordered_map>
#include <vector>

#include "VelmoraCore/CanonicalText.h"
#include "VelmoraCore/CharacterKeys.h"
#include "VelmoraCore/CharacterText.h"

namespace velmora {
namespace {

constexpr std::size_t longestReference = 10000;

using Keys = std::vector<CharacterKey>;

Keys keysOf(std::string_view text, CharacterKeys& characterKeys) {
    Keys keys;
    characterKeys.addAll(text, keys);
    return keys;
}

/// A window of a reference and in how many positions it agrees with the line.
struct Window {
    std::size_t reference = 0;
    std::size_t start = 0;
    std::size_t matches = 0;
};

/// Numbers the distinct characters of a line from 1 on, so that a reference can be compared in
/// numbers of `Small` size; every other character is 0.
template <typename Small>
class LineNumbers {
  public:
    explicit LineNumbers(const Keys& line) : direct_(directKeys, 0) {
        for (const CharacterKey key : line) {
            Small& number = slot(key);
            if (number == 0) {
                number = static_cast<Small>(++count_);
            }
            line_.push_back(number);
        }
    }

    const std::vector<Small>& line() const { return line_; }

    std::vector<Small> of(const Keys& reference) const {
        std::vector<Small> numbers(reference.size());
        for (std::size_t at = 0; at < reference.size(); ++at) {
            const CharacterKey key = reference[at];
            numbers[at] = key < directKeys ? direct_[key] : other(key);
        }
        return numbers;
    }

  private:
    static constexpr std::size_t directKeys = 0x10000;

    Small& slot(CharacterKey key) { return key < directKeys ? direct_[key] : others_[key]; }
    Small other(CharacterKey key) const {
        const auto found = others_.find(key);
        return found == others_.end() ? Small{0} : found->second;
    }

    std::vector<Small> direct_;
    std::unordered_map<CharacterKey, Small> others_;
    std::vector<Small> line_;
    std::size_t count_ = 0;
};

/// How many places of each window agree with the line, for all windows at once: the inner loop runs
/// along the reference, so that the processor compares many windows in one step.
template <typename Small>
std::vector<Small> matchCounts(const std::vector<Small>& line,
                               const std::vector<Small>& reference) {
    std::vector<Small> counts(reference.size() - line.size() + 1, 0);
    Small* const sums = counts.data();
    const std::size_t windows = counts.size();
    for (std::size_t place = 0; place < line.size(); ++place) {
        const Small number = line[place];
        const Small* const numbers = reference.data() + place;
        for (std::size_t start = 0; start < windows; ++start) {
            sums[start] = static_cast<Small>(sums[start] + (numbers[start] == number ? 1 : 0));
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

/// The best window of all references. Lines up to 255 characters fit bytes; lines that fit a
/// reference fit the larger numbers.
template <typename Small>
std::optional<Window> bestWindow(const Keys& line, const std::vector<Keys>& references) {
    const LineNumbers<Small> numbers(line);
    std::optional<Window> best;
    for (std::size_t index = 0; index < references.size(); ++index) {
        const Keys& reference = references[index];
        if (reference.size() < line.size() || reference.size() > longestReference) {
            continue;
        }
        const std::vector<Small> counts = matchCounts(numbers.line(), numbers.of(reference));
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
    const Keys line = keysOf(ocrLine, characterKeys);
    if (line.empty() || references.empty()) {
        return std::nullopt;
    }
    std::vector<Keys> referenceKeys;
    referenceKeys.reserve(references.size());
    for (const std::string& reference : references) {
        referenceKeys.push_back(keysOf(reference, characterKeys));
    }
    if (auto exact = exactAlignment(ocrLine, line, referenceKeys)) {
        return exact;
    }
    if (line.size() > longestReference) {
        return std::nullopt;
    }
    const auto best = line.size() <= 255 ? bestWindow<std::uint8_t>(line, referenceKeys)
                                         : bestWindow<std::uint16_t>(line, referenceKeys);
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
