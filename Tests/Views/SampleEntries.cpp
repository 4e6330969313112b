// SPDX-License-Identifier: MIT
#include "Tests/Views/SampleEntries.h"

#include <utility>

namespace velmora::test::samples {

namespace {

LookupResult lookup(const DictionaryEntry& entry, const std::string& text) {
    LookupResult result;
    result.entry = entry;
    result.matchedText = text;
    result.range = {0, 1};
    return result;
}

EntryDefinition sense(const std::string& partOfSpeech, std::vector<std::string> glosses) {
    EntryDefinition definition;
    definition.partOfSpeech = partOfSpeech;
    definition.glosses = std::move(glosses);
    return definition;
}

LookupResult studyAs(const std::string& text) {
    ExampleSentence example;
    example.hanzi = "我每天学习中文。";
    example.pinyin = "Wǒ měi tiān xué xí Zhōng wén.";
    example.english = "I study Chinese every day.";
    LookupResult result = lookup(
        DictionaryEntry("学习", "學習", "xue2 xi2",
                        {sense("v.", {"to study", "to learn"}), sense("n.", {"learning", "study"})},
                        {example}, 1),
        text);
    result.characterBreakdown = {
        entry("学", "學", "xue2", {{"to learn", "to study", "science"}}),
        entry("习", "習", "xi2", {{"to practice", "to review"}}),
    };
    return result;
}

}  // namespace

DictionaryEntry entry(const std::string& simplified, const std::string& traditional,
                      const std::string& numberedReading,
                      const std::vector<std::vector<std::string>>& senses) {
    std::vector<EntryDefinition> definitions;
    for (const auto& glosses : senses) {
        EntryDefinition definition;
        definition.glosses = glosses;
        definitions.push_back(std::move(definition));
    }
    return DictionaryEntry(simplified, traditional, numberedReading, std::move(definitions));
}

LookupResult simplified(const DictionaryEntry& entry) {
    return lookup(entry, entry.simplified);
}

LookupResult traditional(const DictionaryEntry& entry) {
    return lookup(entry, entry.traditional);
}

LookupResult study() {
    return studyAs("学习");
}

LookupResult studyTraditional() {
    return studyAs("學習");
}

LookupResult water() {
    return simplified(entry("水", "水", "shui3", {{"water"}}));
}

LookupResult mother() {
    return simplified(entry("妈妈", "媽媽", "ma1 ma5", {{"mama", "mommy", "mother"}}));
}

LookupResult longIdiom() {
    LookupResult result = simplified(
        entry("吃一堑，长一智", "吃一塹，長一智", "chi1 yi1 qian4 , zhang3 yi1 zhi4",
              {{"(idiom) to fall into a pit and gain in wisdom", "to learn from one's mistakes"}}));
    result.entry.hskLevel = 6;
    result.characterBreakdown = {
        entry("吃", "吃", "chi1", {{"to eat", "to consume"}}),
        entry("一", "一", "yi1", {{"one", "single"}}),
        entry("堑", "塹", "qian4", {{"moat", "chasm", "pitfall"}}),
        entry("长", "長", "zhang3", {{"chief, head, elder, and whoever else presides", "to grow"}}),
        entry("一", "一", "yi1", {{"one", "single"}}),
        entry("智", "智", "zhi4", {}),
    };
    return result;
}

LookupResult manySenses() {
    std::vector<std::vector<std::string>> senses;
    for (int i = 1; i <= 12; ++i) {
        senses.push_back({"to beat; to strike; to hit; sense number " + std::to_string(i),
                          "to play (a ball game) with somebody", "to send a telegram"});
    }
    return simplified(entry("打", "打", "da3", senses));
}

std::vector<LookupResult> words(std::size_t count) {
    const std::vector<LookupResult> sentence = {
        study(),
        water(),
        mother(),
        simplified(entry("中华人民共和国", "中華人民共和國", "Zhong1 hua2 Ren2 min2 Gong4 he2 guo2",
                         {{"People's Republic of China"}})),
        simplified(
            entry("意思", "意思", "yi4 si5", {{"idea", "opinion"}, {"meaning", "wish"}, {"fun"}})),
    };
    std::vector<LookupResult> result;
    for (std::size_t i = 0; i < count; ++i) {
        result.push_back(sentence[i % sentence.size()]);
    }
    return result;
}

}  // namespace velmora::test::samples
