// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "VelmoraCore/CedictLine.h"
#include "VelmoraCore/CharacterText.h"
#include "VelmoraCore/DictionaryEntry.h"
#include "VelmoraCore/DictionaryText.h"
#include "VelmoraCore/HeadwordIndex.h"
#include "VelmoraCore/MatchedTextRange.h"

namespace velmora {

/// Every entry of the loaded dictionary, indexed by headword; built once, read from any thread.
/// Entries of a word list stay lines of its text until somebody asks for one; an entry has the same
/// identifiers whenever it is handed out.
class DictionaryStore {
  public:
    /// A headword found in a text.
    struct Match {
        std::vector<DictionaryEntry> entries;  ///< Never empty; in store order.
        MatchedTextRange range;                ///< Where it stands, in characters.
        std::string text;                      ///< The matched characters as they stand there.

        /// Member by member; texts are equal under canonical equivalence.
        bool operator==(const Match& other) const;
    };

    explicit DictionaryStore(std::vector<DictionaryEntry> entries);

    /// The given entries, then those of a word list in its order.
    DictionaryStore(std::vector<DictionaryEntry> entries, DictionaryText wordList);

    /// The number of all entries.
    std::size_t entryCount() const { return entries_.size() + lines_.size(); }

    /// The number of entries that came from the word list.
    std::size_t wordListEntryCount() const { return lines_.size(); }

    /// An entry by its place in the store, below `entryCount()`.
    DictionaryEntry entry(std::size_t index) const;

    /// All of them, in order. Large: prefer the lookups.
    std::vector<DictionaryEntry> allEntries() const;

    /// Characters of the longest headword; never below 1.
    long long maxHeadwordLength() const {
        return static_cast<long long>(index_.maxHeadwordLength());
    }

    /// The entries under exactly this headword in store order; an empty list when it is unknown. No
    /// trimming, no case folding, no conversion between scripts.
    std::vector<DictionaryEntry> entries(std::string_view headword) const;

    /// The place of the first of them in the store, or nothing. `character` must be one character
    /// of valid UTF-8.
    std::optional<std::size_t> firstEntryOfCharacter(std::string_view character) const;

    /// The longest headword in the text that covers the character at the offset, the leftmost of
    /// equally long ones; nothing outside the text.
    std::optional<Match> longestMatchCovering(std::string_view text, long long hoveredOffset) const;
    std::optional<Match> longestMatchCovering(const CharacterText& text,
                                              long long hoveredOffset) const;

    /// The same without making the entries.
    std::optional<HeadwordIndex::Occurrence> findLongestCovering(const CharacterText& text,
                                                                 long long hoveredOffset) const;

    /// The same for a text of which only the keys of its characters are given, as `keysOf` makes
    /// them; for whoever searches at many positions of one text. `position` lies within them.
    std::optional<HeadwordIndex::Occurrence> findLongestCovering(
        const std::vector<CharacterKey>& keys, std::size_t position) const {
        return index_.longestCovering(keys, position);
    }

    /// The keys of the characters of a text.
    std::vector<CharacterKey> keysOf(const CharacterText& text) const {
        return index_.keysOf(text);
    }

    /// The entries of a found headword, in store order.
    std::vector<DictionaryEntry> entries(const HeadwordIndex::Occurrence& occurrence) const;

    /// The first of them.
    DictionaryEntry firstEntry(const HeadwordIndex::Occurrence& occurrence) const {
        return entry(index_.firstEntry(occurrence.node));
    }

    /// All of them but the first.
    std::vector<DictionaryEntry> otherEntries(const HeadwordIndex::Occurrence& occurrence) const;

  private:
    /// Where a line of the word list lies in its text, and its fields in it where it is written as
    /// lines are ("T S [R] /G/G/"); lengths of 0 where it is not, or where one does not fit.
    struct Line {
        std::uint32_t start = 0;
        std::uint32_t length = 0;
        std::uint8_t traditional = 0;
        std::uint8_t simplified = 0;
        std::uint16_t reading = 0;
    };

    static Line placeOf(std::string_view line, std::size_t start, const CedictLine& fields);
    CedictLine fieldsOf(const Line& line) const;
    void indexWordList();
    DictionaryEntry entryOfLine(std::size_t line) const;
    Uuid identifier(std::size_t number) const;

    std::vector<DictionaryEntry> entries_;
    std::optional<DictionaryText> wordList_;
    std::vector<Line> lines_;
    HeadwordIndex index_;
    std::uint64_t identifierSeedHigh_ = 0;
    std::uint64_t identifierSeedLow_ = 0;
};

}  // namespace velmora
