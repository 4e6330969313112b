// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <optional>
#include <string_view>
#include <vector>

#include "VelmoraCore/CharacterText.h"
#include "VelmoraCore/DictionaryStore.h"
#include "VelmoraCore/LookupResult.h"

namespace velmora {

/// Turns a text and a character position into the word that lies there. Holds nothing but a
/// reference to a built store; safe to call from any thread.
class LookupEngine {
  public:
    explicit LookupEngine(std::shared_ptr<const DictionaryStore> store);

    /// The longest word that covers the character at the offset (in grapheme clusters of the UTF-8
    /// text). Nothing outside the text, on a character that is not Chinese, or where no word is
    /// known.
    std::optional<LookupResult> lookup(std::string_view text,
                                       long long hoveredCharacterOffset) const;

    /// The same for a text that is split already.
    std::optional<LookupResult> lookup(const CharacterText& text,
                                       long long hoveredCharacterOffset) const;

    /// The words of a whole text from left to right, greedy. Results may overlap where the word
    /// that covers a position begins before it.
    std::vector<LookupResult> lookups(std::string_view text) const;

    /// The entries under exactly this headword; an empty list when it is unknown.
    std::vector<DictionaryEntry> entries(std::string_view headword) const;

  private:
    LookupResult resultOf(const CharacterText& text, const HeadwordIndex::Occurrence& found) const;
    std::optional<LookupResult> lookupCharacter(std::string_view character, long long offset) const;

    std::shared_ptr<const DictionaryStore> store_;
};

}  // namespace velmora
