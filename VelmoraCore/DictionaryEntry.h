// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <set>
#include <string>
#include <vector>

#include "VelmoraCore/EntryDefinition.h"
#include "VelmoraCore/ExampleSentence.h"
#include "VelmoraCore/PinyinSyllable.h"
#include "VelmoraCore/Uuid.h"

namespace velmora {

/// One dictionary entry: a headword in both scripts, its reading and its senses. A plain value.
struct DictionaryEntry {
    Uuid id = Uuid::random();
    std::string simplified;
    std::string traditional;
    std::string pinyinNumbered;  ///< Syllables separated by single blanks, as the source writes it.
    std::string pinyinMarked;    ///< The marked syllables joined with blanks.
    std::vector<PinyinSyllable> syllables;
    std::vector<EntryDefinition> definitions;
    std::vector<ExampleSentence> examples;
    std::optional<long long> hskLevel;  ///< Level in the proficiency test; absent where unknown.

    DictionaryEntry() = default;

    /// Derives `syllables` and `pinyinMarked` from the numbered reading.
    DictionaryEntry(std::string simplifiedHeadword, std::string traditionalHeadword,
                    std::string numberedReading, std::vector<EntryDefinition> senses,
                    std::vector<ExampleSentence> sentences = {},
                    std::optional<long long> level = std::nullopt,
                    Uuid identifier = Uuid::random());

    /// The distinct headword texts, in no promised order; one element where both scripts agree.
    std::set<std::string> headwordVariants() const;

    /// Member by member; texts are equal under canonical equivalence.
    bool operator==(const DictionaryEntry& other) const;
};

}  // namespace velmora
