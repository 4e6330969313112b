// SPDX-License-Identifier: MIT
#include "VelmoraCore/LookupEngine.h"

#include <algorithm>
#include <cstddef>
#include <string>
#include <utility>

namespace velmora {

LookupEngine::LookupEngine(std::shared_ptr<const DictionaryStore> store)
    : store_(std::move(store)) {}

std::optional<LookupResult> LookupEngine::lookup(std::string_view text,
                                                 long long hoveredCharacterOffset) const {
    return lookup(CharacterText(text), hoveredCharacterOffset);
}

std::optional<LookupResult> LookupEngine::lookup(const CharacterText& text,
                                                 long long hoveredCharacterOffset) const {
    if (hoveredCharacterOffset < 0 ||
        static_cast<unsigned long long>(hoveredCharacterOffset) >= text.count()) {
        return std::nullopt;
    }
    const std::string_view hovered = text[static_cast<std::size_t>(hoveredCharacterOffset)];
    if (!isChinese(hovered)) {
        return std::nullopt;
    }
    const auto found = store_->findLongestCovering(text, hoveredCharacterOffset);
    if (!found) {
        return lookupCharacter(hovered, hoveredCharacterOffset);
    }
    std::optional<LookupResult> result(std::in_place);
    result->range = {static_cast<long long>(found->start), static_cast<long long>(found->end)};
    result->matchedText = text.slice(found->start, found->end);
    result->characterBreakdown.reserve(found->end - found->start);
    for (std::size_t index = found->start; index < found->end; ++index) {
        if (auto entry = store_->firstEntryOfCharacter(text[index])) {
            result->characterBreakdown.push_back(*std::move(entry));
        }
    }
    store_->splitEntries(*found, result->entry, result->alternatives);
    return result;
}

/// Where no word covers the character: what is known of the character alone, without alternatives.
std::optional<LookupResult> LookupEngine::lookupCharacter(std::string_view character,
                                                          long long offset) const {
    auto entry = store_->firstEntryOfCharacter(character);
    if (!entry) {
        return std::nullopt;
    }
    return LookupResult{*entry, {offset, offset + 1}, std::string(character), {*entry}, {}};
}

std::vector<LookupResult> LookupEngine::lookups(std::string_view text) const {
    const CharacterText characters(text);
    const auto count = static_cast<long long>(characters.count());
    std::vector<LookupResult> results;
    results.reserve(std::min<std::size_t>(characters.count() / 2 + 1, 1024));
    for (long long position = 0; position < count;) {
        auto result = lookup(characters, position);
        ++position;
        if (result) {
            position = std::max(position, result->range.end);
            results.push_back(*std::move(result));
        }
    }
    return results;
}

std::vector<DictionaryEntry> LookupEngine::entries(std::string_view headword) const {
    return store_->entries(headword);
}

}  // namespace velmora
