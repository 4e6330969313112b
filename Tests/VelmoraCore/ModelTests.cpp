// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <set>
#include <string>
#include <type_traits>
#include <unordered_set>

#include "VelmoraCore/ChineseScript.h"
#include "VelmoraCore/LookupResult.h"
#include "VelmoraCore/SeedDictionary.h"

namespace velmora {
namespace {

TEST(Model, tones_have_their_numbers_and_no_other) {
    ASSERT_EQ(allPinyinTones.size(), 5U);
    for (int number = 0; number <= 4; ++number) {
        EXPECT_EQ(static_cast<int>(allPinyinTones[static_cast<std::size_t>(number)]), number);
        EXPECT_EQ(pinyinToneFromRawValue(number), allPinyinTones[static_cast<std::size_t>(number)]);
    }
    EXPECT_EQ(pinyinToneFromRawValue(0), PinyinTone::neutral);
    EXPECT_FALSE(pinyinToneFromRawValue(5));
    EXPECT_FALSE(pinyinToneFromRawValue(-1));
    EXPECT_FALSE(pinyinToneFromRawValue(4294967296));
    EXPECT_EQ(std::unordered_set<PinyinTone>(allPinyinTones.begin(), allPinyinTones.end()).size(),
              5U);
}

TEST(Model, scripts_have_their_names_and_no_other) {
    EXPECT_EQ(rawValue(ChineseScript::simplified), "simplified");
    EXPECT_EQ(rawValue(ChineseScript::traditional), "traditional");
    EXPECT_EQ(chineseScriptFromRawValue("traditional"), ChineseScript::traditional);
    EXPECT_FALSE(chineseScriptFromRawValue("Simplified"));
    EXPECT_FALSE(chineseScriptFromRawValue("simplified "));
    EXPECT_FALSE(chineseScriptFromRawValue(""));
}

TEST(Model, ranges_are_half_open) {
    EXPECT_EQ((MatchedTextRange{5, 3}).length(), 0);
    EXPECT_EQ((MatchedTextRange{3, 5}).length(), 2);
    EXPECT_FALSE((MatchedTextRange{3, 3}).contains(3));
    EXPECT_TRUE((MatchedTextRange{3, 5}).contains(3));
    EXPECT_TRUE((MatchedTextRange{3, 5}).contains(4));
    EXPECT_FALSE((MatchedTextRange{3, 5}).contains(5));
    EXPECT_FALSE((MatchedTextRange{3, 5}).contains(2));
}

TEST(Model, an_entry_derives_its_marked_reading) {
    const DictionaryEntry entry("学习", "學習", "xue2  xi2", {});
    EXPECT_EQ(entry.pinyinMarked, "xué xí");
    EXPECT_EQ(entry.pinyinNumbered, "xue2  xi2");
    EXPECT_EQ(entry.syllables.size(), 2U);
    const DictionaryEntry silent("学", "學", "", {});
    EXPECT_TRUE(silent.syllables.empty());
    EXPECT_EQ(silent.pinyinMarked, "");
}

TEST(Model, headword_variants_are_distinct) {
    EXPECT_EQ(DictionaryEntry("学", "學", "xue2", {}).headwordVariants(),
              (std::set<std::string>{"学", "學"}));
    EXPECT_EQ(DictionaryEntry("中", "中", "zhong1", {}).headwordVariants().size(), 1U);
    EXPECT_EQ(DictionaryEntry("\u00E9", "e\u0301", "e2", {}).headwordVariants().size(), 1U);
}

TEST(Model, every_construction_has_an_identifier_of_its_own) {
    EXPECT_NE(DictionaryEntry("中", "中", "zhong1", {}).id,
              DictionaryEntry("中", "中", "zhong1", {}).id);
    EXPECT_NE(EntryDefinition().id, EntryDefinition().id);
    EXPECT_NE(ExampleSentence().id, ExampleSentence().id);
    EXPECT_NE(EntryDefinition(), EntryDefinition());
}

TEST(Model, equality_looks_at_every_field) {
    const DictionaryEntry entry = SeedDictionary::entries()[0];
    const auto differs = [&entry](auto change) {
        DictionaryEntry other = entry;
        change(other);
        return !(other == entry);
    };
    EXPECT_EQ(entry, DictionaryEntry(entry));
    EXPECT_TRUE(differs([](auto& other) { other.id = Uuid::random(); }));
    EXPECT_TRUE(differs([](auto& other) { other.simplified += "x"; }));
    EXPECT_TRUE(differs([](auto& other) { other.traditional += "x"; }));
    EXPECT_TRUE(differs([](auto& other) { other.pinyinNumbered += "x"; }));
    EXPECT_TRUE(differs([](auto& other) { other.pinyinMarked += "x"; }));
    EXPECT_TRUE(differs([](auto& other) { other.syllables[0].tone = PinyinTone::fourth; }));
    EXPECT_TRUE(differs([](auto& other) { other.syllables[0].numbered = ""; }));
    EXPECT_TRUE(differs([](auto& other) { other.syllables[0].marked = ""; }));
    EXPECT_TRUE(differs([](auto& other) { other.definitions[0].partOfSpeech.reset(); }));
    EXPECT_TRUE(differs([](auto& other) { other.definitions[0].partOfSpeech = ""; }));
    EXPECT_TRUE(differs([](auto& other) { other.definitions[0].glosses.pop_back(); }));
    EXPECT_TRUE(differs([](auto& other) { other.examples[0].hanzi = ""; }));
    EXPECT_TRUE(differs([](auto& other) { other.examples[0].pinyin = ""; }));
    EXPECT_TRUE(differs([](auto& other) { other.examples[0].english = ""; }));
    EXPECT_TRUE(differs([](auto& other) { other.hskLevel = 9; }));
    EXPECT_TRUE(differs([](auto& other) { other.hskLevel.reset(); }));
    EntryDefinition bare;
    EntryDefinition labelled = bare;
    labelled.partOfSpeech = "";
    EXPECT_NE(bare, labelled);
}

TEST(Model, equal_texts_are_canonically_equivalent_texts) {
    PinyinSyllable composed{"lu:4", "l\u01DC", PinyinTone::fourth};
    PinyinSyllable decomposed{"lu:4", "lu\u0308\u0300", PinyinTone::fourth};
    EXPECT_EQ(composed, decomposed);
    LookupResult one;
    one.matchedText = "\u8C48";
    LookupResult other = one;
    other.matchedText = "\uF900";
    EXPECT_EQ(one, other);
    other.matchedText = "\u8C49";
    EXPECT_NE(one, other);
}

TEST(Model, equality_of_results_looks_at_every_field) {
    LookupResult result;
    result.entry = SeedDictionary::entries()[0];
    const auto differs = [&result](auto change) {
        LookupResult other = result;
        change(other);
        return !(other == result);
    };
    EXPECT_EQ(result, LookupResult(result));
    EXPECT_TRUE(differs([](auto& other) { other.entry.id = Uuid::random(); }));
    EXPECT_TRUE(differs([](auto& other) { other.range.end = 1; }));
    EXPECT_TRUE(differs([](auto& other) { other.characterBreakdown.emplace_back(); }));
    EXPECT_TRUE(differs([](auto& other) { other.alternatives.emplace_back(); }));
}

TEST(Uuid, is_random_and_of_version_4) {
    std::set<Uuid> seen;
    for (int count = 0; count < 1000; ++count) {
        const Uuid uuid = Uuid::random();
        EXPECT_EQ(uuid.bytes[6] >> 4, 4);
        EXPECT_EQ(uuid.bytes[8] >> 6, 2);
        seen.insert(uuid);
    }
    EXPECT_EQ(seen.size(), 1000U);
}

TEST(Uuid, is_written_in_upper_case_and_read_in_either) {
    const auto uuid = Uuid::parse("0f8fad5b-D9CB-469f-A165-70867728950e");
    ASSERT_TRUE(uuid);
    EXPECT_EQ(uuid->toString(), "0F8FAD5B-D9CB-469F-A165-70867728950E");
    EXPECT_EQ(Uuid::parse(uuid->toString()), uuid);
    for (const char* text :
         {"", "0f8fad5b-d9cb-469f-a165-70867728950", "x", "0f8fad5b-d9cb-469f-a165-70867728950e0",
          "{0f8fad5b-d9cb-469f-a165-70867728950}", "0f8fad5b-d9cb-469f-a165-7086772895 e",
          "0f8fad5b0d9cb-469f-a165-70867728950e", "0f8fad5bd9cb469fa16570867728950e----"}) {
        EXPECT_FALSE(Uuid::parse(text)) << text;
    }
}

TEST(SeedDictionary, holds_nine_entries_in_order) {
    const auto& entries = SeedDictionary::entries();
    ASSERT_EQ(entries.size(), 9U);
    const char* const expected[9][4] = {{"学习", "學習", "xue2 xi2", "xué xí"},
                                        {"中文", "中文", "Zhong1 wen2", "Zhōng wén"},
                                        {"知道", "知道", "zhi1 dao5", "zhī dao"},
                                        {"学", "學", "xue2", "xué"},
                                        {"习", "習", "xi2", "xí"},
                                        {"中", "中", "zhong1", "zhōng"},
                                        {"文", "文", "wen2", "wén"},
                                        {"知", "知", "zhi1", "zhī"},
                                        {"道", "道", "dao4", "dào"}};
    const long long levels[9] = {1, 1, 2, 1, 1, 1, 1, 2, 1};
    for (std::size_t index = 0; index < 9; ++index) {
        EXPECT_EQ(entries[index].simplified, expected[index][0]);
        EXPECT_EQ(entries[index].traditional, expected[index][1]);
        EXPECT_EQ(entries[index].pinyinNumbered, expected[index][2]);
        EXPECT_EQ(entries[index].pinyinMarked, expected[index][3]);
        EXPECT_EQ(entries[index].hskLevel, levels[index]);
        EXPECT_EQ(entries[index].examples.size(), index < 3 ? 1U : 0U);
    }
}

TEST(SeedDictionary, holds_the_senses_and_sentences) {
    const auto& entries = SeedDictionary::entries();
    std::string senses;
    for (const DictionaryEntry& entry : entries) {
        for (const EntryDefinition& definition : entry.definitions) {
            senses += definition.partOfSpeech.value_or("-");
            for (const std::string& gloss : definition.glosses) {
                senses += " " + gloss + ",";
            }
        }
        senses += "\n";
    }
    EXPECT_EQ(senses,
              "v. to study, to learn,n. learning, study,\n"
              "n. Chinese language,\nv. to know,\nv. to learn, to study,\n"
              "v. to practice, to review,\nn. middle, China,\n"
              "n. language, writing, culture,\nv. to know, to be aware,\nn. road, way,\n");
    EXPECT_EQ(entries[0].examples[0].hanzi, "我每天学习中文。");
    EXPECT_EQ(entries[0].examples[0].pinyin, "Wǒ měi tiān xué xí Zhōng wén.");
    EXPECT_EQ(entries[1].examples[0].english, "She can speak Chinese.");
    EXPECT_EQ(entries[2].examples[0].pinyin, "Wǒ zhī dao nǐ de yì si.");
}

TEST(SeedDictionary, is_built_once) {
    EXPECT_EQ(&SeedDictionary::entries(), &SeedDictionary::entries());
}

}  // namespace
}  // namespace velmora
