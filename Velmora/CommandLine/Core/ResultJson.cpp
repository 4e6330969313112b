// SPDX-License-Identifier: MIT
#include "Velmora/CommandLine/Core/ResultJson.h"

#include "VelmoraCore/ModelCoding.h"

namespace velmora {

namespace {

nlohmann::ordered_json rangeJson(const MatchedTextRange& range) {
    return {{"start", range.start}, {"end", range.end}};
}

}  // namespace

nlohmann::ordered_json resultJson(const LookupResult& result) {
    return {{"matchedText", result.matchedText},
            {"range", rangeJson(result.range)},
            {"entry", result.entry},
            {"characterBreakdown", result.characterBreakdown},
            {"alternatives", result.alternatives}};
}

nlohmann::ordered_json alignmentJson(const OCRTextCorrector::Alignment& alignment) {
    return {{"text", alignment.text},
            {"referenceIndex", alignment.referenceIndex},
            {"characterRange", rangeJson(alignment.characterRange)}};
}

nlohmann::ordered_json syllablesJson(std::span<const PinyinSyllable> syllables) {
    auto array = nlohmann::ordered_json::array();
    for (const PinyinSyllable& syllable : syllables) {
        array.emplace_back(syllable);
    }
    return array;
}

}  // namespace velmora
