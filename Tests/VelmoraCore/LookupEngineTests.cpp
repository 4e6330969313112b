// SPDX-License-Identifier: MIT
#include "VelmoraCore/LookupEngine.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <memory>
#include <random>
#include <string>
#include <vector>

#include "VelmoraCore/SeedDictionary.h"

namespace velmora {
namespace {

DictionaryEntry word(const std::string& headword, const std::string& gloss = "gloss") {
    EntryDefinition definition;
    definition.glosses = {gloss};
    return {headword, headword, "a1", {definition}};
}

LookupEngine engineOf(std::vector<DictionaryEntry> entries) {
    return LookupEngine(std::make_shared<DictionaryStore>(std::move(entries)));
}

LookupEngine seedEngine() {
    return engineOf(SeedDictionary::entries());
}

std::vector<std::string> simplified(const std::vector<DictionaryEntry>& entries) {
    std::vector<std::string> texts;
    for (const DictionaryEntry& entry : entries) {
        texts.push_back(entry.simplified);
    }
    return texts;
}

using Texts = std::vector<std::string>;

TEST(LookupEngine, finds_the_word_that_covers_the_hovered_character) {
    const auto result = seedEngine().lookup("我学习中文", 2);
    ASSERT_TRUE(result);
    EXPECT_EQ(result->entry, SeedDictionary::entries()[0]);
    EXPECT_EQ(result->range, (MatchedTextRange{1, 3}));
    EXPECT_EQ(result->matchedText, "学习");
    EXPECT_TRUE(result->alternatives.empty());
    EXPECT_EQ(simplified(result->characterBreakdown), (Texts{"学", "习"}));
}

TEST(LookupEngine, breaks_a_word_down_into_its_characters) {
    const auto result = seedEngine().lookup("中文", 1);
    ASSERT_TRUE(result);
    EXPECT_EQ(result->entry.simplified, "中文");
    EXPECT_EQ(simplified(result->characterBreakdown), (Texts{"中", "文"}));
}

TEST(LookupEngine, the_traditional_headword_is_matched_as_it_stands) {
    const auto result = seedEngine().lookup("學習", 0);
    ASSERT_TRUE(result);
    EXPECT_EQ(result->matchedText, "學習");
    EXPECT_EQ(result->entry.simplified, "学习");
}

TEST(LookupEngine, finds_nothing_that_is_not_chinese) {
    const LookupEngine engine =
        engineOf({word("abc"), word("b"), word("。"), word("𠀀"), word("豈")});
    EXPECT_FALSE(engine.lookup("abc", 1));
    EXPECT_FALSE(engine.lookup("。", 0));
    EXPECT_FALSE(engine.lookup("𠀀", 0));
    EXPECT_FALSE(engine.lookup("\xEF\xA4\x80", 0));  // U+F900, which is equivalent to 豈
    EXPECT_TRUE(engine.lookup("豈", 0));
}

TEST(LookupEngine, finds_nothing_outside_the_text) {
    const LookupEngine engine = seedEngine();
    EXPECT_FALSE(engine.lookup("中文", -1));
    EXPECT_FALSE(engine.lookup("中文", 2));
    EXPECT_FALSE(engine.lookup("中文", 9223372036854775807LL));
    EXPECT_FALSE(engine.lookup("中文", -9223372036854775807LL - 1));
    EXPECT_FALSE(engine.lookup("", 0));
}

TEST(LookupEngine, extension_a_counts_as_chinese) {
    const LookupEngine engine = engineOf({word("㐀"), word("䶿")});
    EXPECT_TRUE(engine.lookup("㐀", 0));
    EXPECT_TRUE(engine.lookup("䶿", 0));
}

TEST(LookupEngine, a_word_may_hold_characters_that_are_not_chinese_themselves) {
    const LookupEngine engine = engineOf({word("T恤"), word("恤")});
    EXPECT_FALSE(engine.lookup("T恤", 0));
    const auto result = engine.lookup("T恤", 1);
    ASSERT_TRUE(result);
    EXPECT_EQ(result->matchedText, "T恤");
    EXPECT_EQ(simplified(result->characterBreakdown), (Texts{"恤"}));
}

TEST(LookupEngine, an_ideograph_with_a_variation_selector_is_chinese_and_another_character) {
    const std::string varied = "中\xF3\xA0\x84\x80";
    const LookupEngine engine = engineOf({word("中"), word(varied, "varied")});
    const auto result = engine.lookup(varied + "中", 0);
    ASSERT_TRUE(result);
    EXPECT_EQ(result->matchedText, varied);
    EXPECT_EQ(result->entry.definitions[0].glosses, (Texts{"varied"}));
    EXPECT_EQ(result->range, (MatchedTextRange{0, 1}));
    EXPECT_FALSE(engineOf({word("中")}).lookup(varied, 0));
}

TEST(LookupEngine, repeated_characters_repeat_in_the_breakdown) {
    const auto result = engineOf({word("看看"), word("看")}).lookup("看看", 0);
    ASSERT_TRUE(result);
    EXPECT_EQ(simplified(result->characterBreakdown), (Texts{"看", "看"}));
}

TEST(LookupEngine, characters_without_an_entry_are_left_out_of_the_breakdown) {
    const auto result = engineOf({word("看见"), word("见")}).lookup("看见", 0);
    ASSERT_TRUE(result);
    EXPECT_EQ(simplified(result->characterBreakdown), (Texts{"见"}));
}

TEST(LookupEngine, the_other_entries_of_the_headword_are_alternatives_in_order) {
    const auto result =
        engineOf({word("行", "1"), word("行", "2"), word("行", "3")}).lookup("行", 0);
    ASSERT_TRUE(result);
    EXPECT_EQ(result->entry.definitions[0].glosses, (Texts{"1"}));
    ASSERT_EQ(result->alternatives.size(), 2U);
    EXPECT_EQ(result->alternatives[0].definitions[0].glosses, (Texts{"2"}));
    EXPECT_EQ(result->alternatives[1].definitions[0].glosses, (Texts{"3"}));
    ASSERT_EQ(result->characterBreakdown.size(), 1U);
    EXPECT_EQ(result->characterBreakdown[0], result->entry);
}

TEST(LookupEngine, splits_a_text_from_left_to_right) {
    const auto results = seedEngine().lookups("我学习中文。");
    ASSERT_EQ(results.size(), 2U);
    EXPECT_EQ(results[0].matchedText, "学习");
    EXPECT_EQ(results[0].range, (MatchedTextRange{1, 3}));
    EXPECT_EQ(results[1].matchedText, "中文");
    EXPECT_EQ(results[1].range, (MatchedTextRange{3, 5}));
    EXPECT_TRUE(seedEngine().lookups("").empty());
    EXPECT_TRUE(seedEngine().lookups("abc 。").empty());
}

TEST(LookupEngine, words_of_a_text_may_overlap_to_the_left) {
    const LookupEngine engine = engineOf({word("甲"), word("乙丙"), word("甲乙"), word("乙丙丁")});
    const auto results = engine.lookups("甲乙丙丁");
    ASSERT_EQ(results.size(), 2U);
    EXPECT_EQ(results[0].range, (MatchedTextRange{0, 2}));
    EXPECT_EQ(results[1].range, (MatchedTextRange{1, 4}));
}

TEST(LookupEngine, the_words_of_a_text_are_those_of_its_positions_one_after_the_other) {
    const LookupEngine engine =
        engineOf({word("甲"), word("甲", "2"), word("乙丙"), word("甲乙"), word("乙丙丁"),
                  word("丙x"), word("丁丁丁"), word("乙\u0301"), word("e\u0301甲")});
    const std::vector<std::string> pieces{"甲", "乙",     "丙", "丁",   "x", "e\u0301",
                                          "é",  "\u0301", "。", "🙂", "𠀀"};
    std::mt19937 random(1);
    for (int round = 0; round < 300; ++round) {
        std::string text;
        for (std::size_t count = random() % 90; count > 0; --count) {
            text += pieces[random() % pieces.size()];
        }
        std::vector<LookupResult> expected;
        const auto length = static_cast<long long>(CharacterText(text).count());
        for (long long position = 0; position < length;) {
            const auto result = engine.lookup(text, position++);
            if (result) {
                position = std::max(position, result->range.end);
                expected.push_back(*result);
            }
        }
        EXPECT_EQ(engine.lookups(text), expected) << text;
    }
}

TEST(LookupEngine, a_character_alone_has_itself_as_its_breakdown_and_no_alternatives) {
    const DictionaryEntry entry = word("行");
    const LookupResult result = LookupResult::ofCharacter(entry, "行", 7);
    EXPECT_EQ(result, (LookupResult{entry, {7, 8}, "行", {entry}, {}}));
}

TEST(LookupEngine, passes_exact_lookups_through) {
    const LookupEngine engine = seedEngine();
    EXPECT_EQ(engine.entries("學習"), engine.entries("学习"));
    ASSERT_EQ(engine.entries("学习").size(), 1U);
    EXPECT_TRUE(engine.entries("学 ").empty());
    EXPECT_TRUE(engine.entries("").empty());
}

TEST(LookupEngine, broken_utf8_counts_as_replacement_characters) {
    const auto result = seedEngine().lookup("\xFF\xE4\xB8中文", 2);
    ASSERT_TRUE(result);
    EXPECT_EQ(result->range, (MatchedTextRange{2, 4}));
}

}  // namespace
}  // namespace velmora
