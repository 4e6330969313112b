// SPDX-License-Identifier: MIT
#include "VelmoraCore/SeedDictionary.h"

#include <string>
#include <utility>

namespace velmora {
namespace {

EntryDefinition sense(std::string partOfSpeech, std::vector<std::string> glosses) {
    EntryDefinition definition;
    definition.partOfSpeech = std::move(partOfSpeech);
    definition.glosses = std::move(glosses);
    return definition;
}

std::vector<ExampleSentence> sentence(std::string hanzi, std::string pinyin, std::string english) {
    ExampleSentence example;
    example.hanzi = std::move(hanzi);
    example.pinyin = std::move(pinyin);
    example.english = std::move(english);
    return {std::move(example)};
}

std::vector<DictionaryEntry> words() {
    return {
        {"学习",
         "學習",
         "xue2 xi2",
         {sense("v.", {"to study", "to learn"}), sense("n.", {"learning", "study"})},
         sentence("我每天学习中文。", "Wǒ měi tiān xué xí Zhōng wén.",
                  "I study Chinese every day."),
         1},
        {"中文",
         "中文",
         "Zhong1 wen2",
         {sense("n.", {"Chinese language"})},
         sentence("她会说中文。", "Tā huì shuō Zhōng wén.", "She can speak Chinese."),
         1},
        {"知道",
         "知道",
         "zhi1 dao5",
         {sense("v.", {"to know"})},
         sentence("我知道你的意思。", "Wǒ zhī dao nǐ de yì si.", "I know what you mean."),
         2},
    };
}

std::vector<DictionaryEntry> characters() {
    return {
        {"学", "學", "xue2", {sense("v.", {"to learn", "to study"})}, {}, 1},
        {"习", "習", "xi2", {sense("v.", {"to practice", "to review"})}, {}, 1},
        {"中", "中", "zhong1", {sense("n.", {"middle", "China"})}, {}, 1},
        {"文", "文", "wen2", {sense("n.", {"language", "writing", "culture"})}, {}, 1},
        {"知", "知", "zhi1", {sense("v.", {"to know", "to be aware"})}, {}, 2},
        {"道", "道", "dao4", {sense("n.", {"road", "way"})}, {}, 1},
    };
}

}  // namespace

const std::vector<DictionaryEntry>& SeedDictionary::entries() {
    static const std::vector<DictionaryEntry> all = [] {
        std::vector<DictionaryEntry> list = words();
        for (DictionaryEntry& entry : characters()) {
            list.push_back(std::move(entry));
        }
        return list;
    }();
    return all;
}

}  // namespace velmora
