// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

#include "VelmoraCore/LookupResult.h"

namespace velmora::test {

/// Lookups of every length that the views have to hold.
namespace samples {

/// An entry with one sense for each list of glosses, without parts of speech.
DictionaryEntry entry(const std::string& simplified, const std::string& traditional,
                      const std::string& numberedReading,
                      const std::vector<std::vector<std::string>>& senses);

/// A lookup whose text is exactly the entry's headword.
LookupResult simplified(const DictionaryEntry& entry);
LookupResult traditional(const DictionaryEntry& entry);

LookupResult study();             ///< 学习: parts of speech, breakdown, example, level 1.
LookupResult studyTraditional();  ///< 學習, the same.
LookupResult water();             ///< 水: one character, one sense, nothing else.
LookupResult mother();            ///< 妈妈: a neutral tone.
LookupResult longIdiom();         ///< Eight characters: a long reading.
LookupResult manySenses();        ///< 打: more senses than the card can show.

/// The words of a sentence, again and again, this many.
std::vector<LookupResult> words(std::size_t count);

}  // namespace samples

}  // namespace velmora::test
