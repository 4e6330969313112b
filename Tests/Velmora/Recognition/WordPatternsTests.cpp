// SPDX-License-Identifier: MIT
#include "Velmora/Platform/Recognition/WordPatterns.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "Velmora/Platform/Recognition/DictionaryWords.h"
#include "VelmoraCore/DictionaryStore.h"

namespace velmora {
namespace {

WordPatterns patternsOf(const std::vector<std::string>& words) {
    WordPatterns patterns;
    for (const std::string& word : words) {
        patterns.add(word);
    }
    patterns.finish();
    return patterns;
}

TEST(WordPatterns, TellWhatCompletesAWord) {
    const WordPatterns patterns = patternsOf({"中国", "中文", "国中", "中国人", "中文"});
    EXPECT_EQ(patterns.completions(U"中?", 1), (std::vector<char32_t>{U'国', U'文'}));
    EXPECT_EQ(patterns.completions(U"?国", 0), std::vector<char32_t>{U'中'});
    EXPECT_EQ(patterns.completions(U"中?人", 1), std::vector<char32_t>{U'国'});
    EXPECT_TRUE(patterns.completions(U"中?", 0).empty()) << "the gap counts, not what is in it";
    EXPECT_TRUE(patterns.completions(U"文?", 1).empty());
    EXPECT_TRUE(patterns.completions(U"中?国", 1).empty());
}

TEST(WordPatterns, HoldWordsOfTwoToSixChineseCharacters) {
    const WordPatterns patterns = patternsOf(
        {"中", "中国", "一二三四五六", "一二三四五六七", "卡拉OK", "T恤", "", "你\xFF好"});
    EXPECT_TRUE(patterns.contains(U"中国"));
    EXPECT_TRUE(patterns.contains(U"一二三四五六"));
    EXPECT_FALSE(patterns.contains(U"一二三四五六七"));
    EXPECT_FALSE(patterns.contains(U"卡拉OK"));
    EXPECT_FALSE(patterns.contains(U"中"));
    EXPECT_FALSE(patterns.contains(U""));
    EXPECT_EQ(patterns.characters(),
              (std::vector<char32_t>{U'一', U'三', U'中', U'二', U'五', U'六', U'四', U'国'}));
}

TEST(WordPatterns, MayHoldNothing) {
    const WordPatterns patterns = patternsOf({});
    EXPECT_TRUE(patterns.empty());
    EXPECT_TRUE(patterns.characters().empty());
    EXPECT_TRUE(patterns.completions(U"中?", 1).empty());
    EXPECT_FALSE(patterns.contains(U"中国"));
}

TEST(DictionaryWords, AreThoseOfBothScripts) {
    DictionaryEntry entry;
    entry.simplified = "图书馆";
    entry.traditional = "圖書館";
    const auto patterns = wordPatternsOf(DictionaryStore({entry}));
    EXPECT_TRUE(patterns->contains(U"图书馆"));
    EXPECT_TRUE(patterns->contains(U"圖書館"));
    EXPECT_EQ(patterns->characters().size(), 6U);
    EXPECT_TRUE(wordPatternsOf(DictionaryStore(std::vector<DictionaryEntry>()))->empty());
}

}  // namespace
}  // namespace velmora
