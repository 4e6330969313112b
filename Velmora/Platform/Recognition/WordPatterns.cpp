// SPDX-License-Identifier: MIT
#include "Velmora/Platform/Recognition/WordPatterns.h"

#include <algorithm>
#include <string>

#include "Velmora/Platform/Recognition/CodePoint.h"

namespace velmora {

namespace {

/// FNV-1a over the length, the place of the gap and the other characters, folded to 32 bits.
std::uint32_t patternHash(std::u32string_view text, std::size_t gap) {
    std::uint64_t hash = 14695981039346656037ULL;
    const auto mix = [&hash](std::uint64_t value) {
        hash ^= value;
        hash *= 1099511628211ULL;
    };
    mix(text.size() * 16 + gap);
    for (std::size_t i = 0; i < text.size(); ++i) {
        mix(i == gap ? 0 : text[i]);
    }
    return static_cast<std::uint32_t>(hash ^ (hash >> 32));
}

}  // namespace

void WordPatterns::add(std::string_view utf8Word) {
    const std::u32string word = codePointsOf(utf8Word);
    if (word.size() < 2 || word.size() > longestWord ||
        !std::all_of(word.begin(), word.end(), isHan)) {
        return;
    }
    for (std::size_t gap = 0; gap < word.size(); ++gap) {
        entries_.emplace_back(patternHash(word, gap), word[gap]);
    }
}

void WordPatterns::finish() {
    std::sort(entries_.begin(), entries_.end());
    entries_.erase(std::unique(entries_.begin(), entries_.end()), entries_.end());
    entries_.shrink_to_fit();
}

std::vector<char32_t> WordPatterns::completions(std::u32string_view text, std::size_t gap) const {
    const std::uint32_t hash = patternHash(text, gap);
    std::vector<char32_t> characters;
    for (auto entry = std::lower_bound(entries_.begin(), entries_.end(), std::pair(hash, U'\0'));
         entry != entries_.end() && entry->first == hash; ++entry) {
        characters.push_back(entry->second);
    }
    return characters;
}

std::vector<char32_t> WordPatterns::characters() const {
    std::vector<char32_t> characters;
    for (const auto& entry : entries_) {
        characters.push_back(entry.second);
    }
    std::sort(characters.begin(), characters.end());
    characters.erase(std::unique(characters.begin(), characters.end()), characters.end());
    return characters;
}

bool WordPatterns::contains(std::u32string_view word) const {
    return !word.empty() && std::binary_search(entries_.begin(), entries_.end(),
                                               std::pair(patternHash(word, 0), word[0]));
}

}  // namespace velmora
