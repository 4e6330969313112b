// SPDX-License-Identifier: MIT
#include <cstdint>
#include <cstdlib>
#include <string>
#include <vector>

#include "Fuzz/Lines.h"
#include "VelmoraCore/CanonicalText.h"
#include "VelmoraCore/DictionaryStore.h"

namespace {

using velmora::CharacterText;

/// The longest headword over a position, found by comparing every substring with every headword.
velmora::MatchedTextRange findLiterally(const std::vector<CharacterText>& headwords,
                                        const CharacterText& text, std::size_t position) {
    velmora::MatchedTextRange best{};
    for (std::size_t start = 0; start <= position; ++start) {
        for (const CharacterText& headword : headwords) {
            const std::size_t end = start + headword.count();
            if (end > position && end <= text.count() &&
                static_cast<long long>(end - start) > best.length() &&
                velmora::canonicallyEqual(headword.text(), text.slice(start, end))) {
                best = {static_cast<long long>(start), static_cast<long long>(end)};
            }
        }
    }
    return best;
}

}  // namespace

/// The first line is a text, the others are headwords.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size > 400) {
        return 0;
    }
    std::vector<CharacterText> lines;
    for (const std::string& line : linesOf(data, size)) {
        lines.emplace_back(line);
    }
    if (lines.empty()) {
        return 0;
    }
    const CharacterText text = lines.front();
    lines.erase(lines.begin());
    std::vector<velmora::DictionaryEntry> entries;
    for (const CharacterText& headword : lines) {
        entries.emplace_back(headword.text(), headword.text(), "a1",
                             std::vector<velmora::EntryDefinition>{});
    }
    const velmora::DictionaryStore store(std::move(entries));
    for (std::size_t position = 0; position < text.count(); ++position) {
        const auto found = store.findLongestCovering(text, static_cast<long long>(position));
        const auto expected = findLiterally(lines, text, position);
        const velmora::MatchedTextRange range =
            found ? velmora::MatchedTextRange{static_cast<long long>(found->start),
                                              static_cast<long long>(found->end)}
                  : velmora::MatchedTextRange{};
        if (!(range == expected)) {
            std::abort();
        }
    }
    return 0;
}
