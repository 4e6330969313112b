// SPDX-License-Identifier: MIT
#include "Velmora/Coordination/RecentLookups.h"

#include <gtest/gtest.h>

#include <string>

#include "Velmora/Coordination/LookupTexts.h"

namespace velmora {
namespace {

LookupResult word(const std::string& simplified, const std::string& pinyin = "a1") {
    LookupResult result;
    result.entry = DictionaryEntry(simplified, simplified, pinyin, {});
    result.matchedText = simplified;
    return result;
}

std::string words(const RecentLookups& recents) {
    std::string text;
    for (const LookupResult& result : recents.all()) {
        text += result.entry.simplified;
    }
    return text;
}

TEST(RecentLookups, HoldsEachHeadwordOnceTheNewestFirst) {
    RecentLookups recents;
    recents.add({word("甲")});
    recents.add({word("乙")});
    recents.add({word("甲")});
    EXPECT_EQ(words(recents), "甲乙");
}

TEST(RecentLookups, KeepsTheOrderOfWhatIsAddedTogether) {
    RecentLookups recents;
    recents.add({word("丁"), word("乙")});
    recents.add({word("甲"), word("乙"), word("丙"), word("甲")});
    EXPECT_EQ(words(recents), "甲乙丙丁");
}

TEST(RecentLookups, NeverExceedsEight) {
    RecentLookups recents;
    recents.add({word("一"), word("二"), word("三"), word("四"), word("五"), word("六")});
    recents.add({word("七"), word("八"), word("九")});
    EXPECT_EQ(words(recents), "七八九一二三四五");
    recents.add({word("1"), word("2"), word("3"), word("4"), word("5"), word("6"), word("7"),
                 word("8"), word("9")});
    EXPECT_EQ(words(recents), "12345678");
}

TEST(RecentLookups, ReplacesTheOlderResultOfAHeadword) {
    RecentLookups recents;
    recents.add({word("甲", "jia3")});
    recents.add({word("甲", "ka3")});
    ASSERT_EQ(recents.all().size(), 1U);
    EXPECT_EQ(recents.all()[0].entry.pinyinNumbered, "ka3");
}

TEST(LookupTexts, CountWords) {
    EXPECT_EQ(selectionStatus(1, false), "Showing pinyin for 1 selected word");
    EXPECT_EQ(selectionStatus(2, false), "Showing pinyin for 2 selected words");
    EXPECT_EQ(selectionStatus(3, false), "Showing pinyin for 3 selected words");
    EXPECT_EQ(selectionStatus(1, true), "Showing 1 selected lookup");
    EXPECT_EQ(selectionStatus(2, true), "Showing 2 selected lookups");
    EXPECT_EQ(hoveredStatus("知道", false), "Showing pinyin for 知道");
    EXPECT_EQ(hoveredStatus("知道", true), "Showing dictionary for 知道");
}

TEST(LookupTexts, PinyinLineHoldsSixWords) {
    EXPECT_EQ(pinyinLine({}), "");
    EXPECT_EQ(pinyinLine({word("知道", "zhi1 dao5")}), "zhī dao");
    EXPECT_EQ(pinyinLine({word("a", "a1"), word("b", "a2"), word("c", "a3"), word("d", "a4"),
                          word("e", "e1"), word("f", "e2"), word("g", "e3")}),
              "ā   á   ǎ   à   ē   é");
}

}  // namespace
}  // namespace velmora
