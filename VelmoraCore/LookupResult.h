// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "VelmoraCore/DictionaryEntry.h"
#include "VelmoraCore/MatchedTextRange.h"

namespace velmora {

/// The answer to one lookup.
struct LookupResult {
    DictionaryEntry entry;    ///< The entry shown first.
    MatchedTextRange range;   ///< Where the word lies in the looked-up text, in characters.
    std::string matchedText;  ///< The matched characters exactly as they stand in the text.
    std::vector<DictionaryEntry> characterBreakdown;  ///< One per character that has an entry.
    std::vector<DictionaryEntry> alternatives;        ///< The headword's other entries.

    /// What is told of a character at a position that no word covers: its first entry alone, which
    /// is its whole breakdown, too, and no alternatives.
    static LookupResult ofCharacter(DictionaryEntry entry, std::string_view character,
                                    long long position);

    /// Member by member; texts are equal under canonical equivalence.
    bool operator==(const LookupResult& other) const;
};

}  // namespace velmora
