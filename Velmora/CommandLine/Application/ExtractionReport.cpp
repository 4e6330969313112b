// SPDX-License-Identifier: MIT
#include "Velmora/CommandLine/Application/ExtractionReport.h"

#include <array>
#include <cstdio>

#include "Velmora/CommandLine/Core/TextLayout.h"
#include "VelmoraCore/CharacterText.h"

namespace velmora {

namespace {

/// What other programs say may be of any length and hold control characters.
std::string shortened(const std::string& text) {
    constexpr std::size_t longest = 160;
    const CharacterText characters(text);
    if (characters.count() <= longest) {
        return printable(text);
    }
    return printable(std::string(characters.slice(0, longest))) + "…";
}

}  // namespace

void ExtractionReport::attemptEnded(const std::string& attempt, const std::string& outcome,
                                    double milliseconds) {
    if (explain_ == nullptr) {
        return;
    }
    std::array<char, 32> time{};
    std::snprintf(time.data(), time.size(), "%8.1f ms  ", milliseconds);
    *explain_ << time.data() << attempt << ": " << shortened(outcome) << '\n';
}

void ExtractionReport::finished(std::optional<ExtractionPath> path) {
    path_ = path;
    if (explain_ != nullptr) {
        *explain_ << (path ? "found by " + std::string(name(*path)) : "found nothing") << '\n';
    }
}

}  // namespace velmora
