// SPDX-License-Identifier: MIT
#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <optional>
#include <string>
#include <vector>

#include "Fuzz/Lines.h"
#include "VelmoraCore/CanonicalText.h"
#include "VelmoraCore/CharacterText.h"
#include "VelmoraCore/OCRTextCorrector.h"

namespace {

using velmora::CharacterText;
using Alignment = velmora::OCRTextCorrector::Alignment;

std::size_t matchesAt(const CharacterText& line, const CharacterText& reference,
                      std::size_t start) {
    std::size_t matches = 0;
    for (std::size_t place = 0; place < line.count(); ++place) {
        matches += static_cast<std::size_t>(
            velmora::canonicallyEqual(reference[start + place], line[place]));
    }
    return matches;
}

/// The rules as they are told, one character after the other.
std::optional<Alignment> alignLiterally(const std::string& ocrLine,
                                        const std::vector<std::string>& references) {
    const CharacterText line(ocrLine);
    const std::size_t length = line.count();
    std::optional<Alignment> best;
    std::optional<Alignment> exact;
    std::size_t bestMatches = 0;
    for (std::size_t index = 0; index < references.size() && length > 0; ++index) {
        const CharacterText reference(references[index]);
        for (std::size_t start = 0; start + length <= reference.count(); ++start) {
            const std::size_t matches = matchesAt(line, reference, start);
            const Alignment here{
                std::string(reference.slice(start, start + length)),
                static_cast<long long>(index),
                {static_cast<long long>(start), static_cast<long long>(start + length)}};
            if (matches == length && !exact) {
                exact = here;
                exact->text = ocrLine;
            }
            if (!best || matches > bestMatches) {
                best = here;
                bestMatches = matches;
            }
        }
    }
    const std::size_t allowed = length < 4 ? 1 : length / 4;
    return exact || !best ? exact : length - bestMatches <= allowed ? best : std::nullopt;
}

}  // namespace

/// The first line is the recognised one, the others are references.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size > 600) {
        return 0;
    }
    std::vector<std::string> lines = linesOf(data, size);
    if (lines.empty()) {
        return 0;
    }
    const std::string line = lines.front();
    lines.erase(lines.begin());
    const auto aligned = velmora::OCRTextCorrector::align(line, lines);
    if (aligned != alignLiterally(line, lines)) {
        std::abort();
    }
    return 0;
}
