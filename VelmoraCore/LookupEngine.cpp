// SPDX-License-Identifier: MIT
#include "VelmoraCore/LookupEngine.h"

#include <algorithm>
#include <cstddef>
#include <string>
#include <utility>

namespace velmora {
namespace {

/// The most results that room is made for before there are any.
constexpr std::size_t mostReserved = 4096;

}  // namespace

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
    return resultOf(text, *found);
}

LookupResult LookupEngine::resultOf(const CharacterText& text,
                                    const HeadwordIndex::Occurrence& found) const {
    LookupResult result{store_->firstEntry(found),
                        {static_cast<long long>(found.start), static_cast<long long>(found.end)},
                        std::string(text.slice(found.start, found.end)),
                        {},
                        store_->otherEntries(found)};
    std::vector<DictionaryEntry>& breakdown = result.characterBreakdown;
    breakdown.reserve(found.end - found.start);
    if (found.end - found.start == 1) {
        breakdown.push_back(result.entry);
        return result;
    }
    for (std::size_t index = found.start; index < found.end; ++index) {
        if (const auto number = store_->firstEntryOfCharacter(text[index])) {
            breakdown.push_back(store_->entry(*number));
        }
    }
    return result;
}

/// Where no word covers the character: what is known of the character alone.
std::optional<LookupResult> LookupEngine::lookupCharacter(std::string_view character,
                                                          long long offset) const {
    const auto number = store_->firstEntryOfCharacter(character);
    return number
               ? std::optional(LookupResult::ofCharacter(store_->entry(*number), character, offset))
               : std::nullopt;
}

std::vector<LookupResult> LookupEngine::lookups(std::string_view text) const {
    const CharacterText characters(text);
    const std::vector<CharacterKey> keys = store_->keysOf(characters);
    std::vector<LookupResult> results;
    // Prose has three words in five characters.
    results.reserve(std::min<std::size_t>(keys.size() * 2 / 3 + 1, mostReserved));
    for (std::size_t position = 0; position < keys.size();) {
        std::size_t next = position + 1;
        if (isChinese(characters[position])) {
            if (const auto found = store_->findLongestCovering(keys, position)) {
                results.push_back(resultOf(characters, *found));
                next = std::max(next, found->end);
            } else if (auto alone = lookupCharacter(characters[position],
                                                    static_cast<long long>(position))) {
                results.push_back(*std::move(alone));
            }
        }
        position = next;
    }
    return results;
}

std::vector<DictionaryEntry> LookupEngine::entries(std::string_view headword) const {
    return store_->entries(headword);
}

}  // namespace velmora
