// SPDX-License-Identifier: MIT
// Lookups on the word list that the build bundles. Where the build has none, what must hold without
// one is tested instead.

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "VelmoraCore/BundledDictionary.h"
#include "VelmoraCore/LookupEngine.h"

namespace velmora {
namespace {

using Texts = std::vector<std::string>;

bool hasWordList() {
    return !BundledDictionary::error();
}

LookupEngine engine() {
    return LookupEngine(BundledDictionary::store());
}

/// The words of a text in order, joined with bars.
std::string segmented(const std::string& text) {
    std::string words;
    for (const LookupResult& result : engine().lookups(text)) {
        words += (words.empty() ? "" : "|") + result.matchedText;
    }
    return words;
}

TEST(WordList, is_there_in_full_or_not_at_all) {
    const auto store = BundledDictionary::store();
    if (hasWordList()) {
        EXPECT_GT(store->wordListEntryCount(), 100000U);
        EXPECT_GE(store->maxHeadwordLength(), 15);
    } else {
        EXPECT_EQ(BundledDictionary::error(), DictionaryError::missing);
        EXPECT_EQ(store->entryCount(), 9U);
    }
}

TEST(WordList, seed_entries_are_shown_before_those_of_the_list) {
    const auto result = engine().lookup("我学习中文", 2);
    ASSERT_TRUE(result);
    EXPECT_EQ(result->matchedText, "学习");
    EXPECT_EQ(result->entry.hskLevel, 1);
    EXPECT_EQ(result->entry.examples.size(), 1U);
    EXPECT_EQ(result->alternatives.size(), hasWordList() ? 1U : 0U);
}

TEST(WordList, words_of_sentences_are_found) {
    if (!hasWordList()) {
        EXPECT_EQ(segmented("我学习中文。"), "学习|中文");
        return;
    }
    EXPECT_EQ(segmented("我学习中文。"), "我|学习|中文");
    EXPECT_EQ(segmented("中华人民共和国成立了！"), "中华人民共和国|成立|了");
    EXPECT_EQ(segmented("他在北京大学读书"), "他|在|北京大学|读书");
    EXPECT_EQ(segmented("我們學習漢語"), "我們|學習|漢語");
    EXPECT_EQ(segmented("他穿T恤"), "他|穿|T恤");
}

TEST(WordList, readings_and_alternatives_are_those_of_the_list) {
    const auto result = engine().lookup("银行", 1);
    if (!hasWordList()) {
        EXPECT_FALSE(result);
        return;
    }
    ASSERT_TRUE(result);
    EXPECT_EQ(result->entry.pinyinMarked, "yín háng");
    EXPECT_EQ(result->entry.traditional, "銀行");
    EXPECT_EQ(result->characterBreakdown.size(), 2U);
    const auto several = engine().lookup("行", 0);
    ASSERT_TRUE(several);
    EXPECT_EQ(several->entry.pinyinMarked, "háng");
    ASSERT_EQ(several->alternatives.size(), 1U);
    EXPECT_EQ(several->alternatives[0].pinyinMarked, "xíng");
    EXPECT_EQ(engine().lookup("女儿", 0)->entry.pinyinMarked, "nǚ ér");
    EXPECT_EQ(engine().lookup("绿", 0)->entry.syllables.at(0).tone, PinyinTone::fourth);
}

TEST(WordList, every_entry_is_found_under_both_of_its_headwords) {
    const auto store = BundledDictionary::store();
    for (std::size_t index = 0; index < store->entryCount(); index += 37) {
        const DictionaryEntry entry = store->entry(index);
        for (const std::string& headword : entry.headwordVariants()) {
            const auto entries = store->entries(headword);
            ASSERT_NE(std::find(entries.begin(), entries.end(), entry), entries.end()) << headword;
            const auto match = store->longestMatchCovering(headword, 0);
            ASSERT_TRUE(match);
            ASSERT_EQ(match->text, headword);
        }
    }
}

}  // namespace
}  // namespace velmora
