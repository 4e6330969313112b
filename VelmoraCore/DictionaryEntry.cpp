// SPDX-License-Identifier: MIT
#include "VelmoraCore/DictionaryEntry.h"

#include <utility>

#include "VelmoraCore/CanonicalText.h"
#include "VelmoraCore/PinyinConverter.h"

namespace velmora {

DictionaryEntry::DictionaryEntry(std::string simplifiedHeadword, std::string traditionalHeadword,
                                 std::string numberedReading, std::vector<EntryDefinition> senses,
                                 std::vector<ExampleSentence> sentences,
                                 std::optional<long long> level, Uuid identifier)
    : id(identifier),
      simplified(std::move(simplifiedHeadword)),
      traditional(std::move(traditionalHeadword)),
      pinyinNumbered(std::move(numberedReading)),
      syllables(PinyinConverter::convertPhrase(pinyinNumbered)),
      definitions(std::move(senses)),
      examples(std::move(sentences)),
      hskLevel(level) {
    pinyinMarked = PinyinConverter::joinMarked(syllables);
}

std::set<std::string> DictionaryEntry::headwordVariants() const {
    if (canonicallyEqual(simplified, traditional)) {
        return {simplified};
    }
    return {simplified, traditional};
}

bool DictionaryEntry::operator==(const DictionaryEntry& other) const {
    return id == other.id && hskLevel == other.hskLevel &&
           canonicallyEqual(simplified, other.simplified) &&
           canonicallyEqual(traditional, other.traditional) &&
           canonicallyEqual(pinyinNumbered, other.pinyinNumbered) &&
           canonicallyEqual(pinyinMarked, other.pinyinMarked) && syllables == other.syllables &&
           definitions == other.definitions && examples == other.examples;
}

}  // namespace velmora
