// SPDX-License-Identifier: MIT
#include "VelmoraCore/CedictParser.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace velmora {
namespace {

using Texts = std::vector<std::string>;

/// The glosses of a line, or one that says it was rejected.
Texts glosses(const std::string& line) {
    const auto entry = CedictParser::parseLine(line);
    return entry ? entry->definitions.at(0).glosses : Texts{"(rejected)"};
}

bool rejected(const std::string& line) {
    return !CedictParser::parseLine(line);
}

TEST(CedictParser, reads_a_line) {
    const auto entry = CedictParser::parseLine("中國 中国 [Zhong1 guo2] /China/");
    ASSERT_TRUE(entry);
    EXPECT_EQ(entry->traditional, "中國");
    EXPECT_EQ(entry->simplified, "中国");
    EXPECT_EQ(entry->pinyinNumbered, "Zhong1 guo2");
    EXPECT_EQ(entry->pinyinMarked, "Zhōng guó");
    EXPECT_EQ(entry->syllables.size(), 2U);
    ASSERT_EQ(entry->definitions.size(), 1U);
    EXPECT_EQ(entry->definitions[0].glosses, (Texts{"China"}));
    EXPECT_FALSE(entry->definitions[0].partOfSpeech);
    EXPECT_TRUE(entry->examples.empty());
    EXPECT_FALSE(entry->hskLevel);
}

TEST(CedictParser, takes_glosses_verbatim) {
    EXPECT_EQ(glosses("a b [c] /x/CL:個|个[ge4],位[wei4]/ two ways /see [d] too/"),
              (Texts{"x", "CL:個|个[ge4],位[wei4]", " two ways ", "see [d] too"}));
    EXPECT_EQ(glosses("a b [c] /x//y/"), (Texts{"x", "y"}));
    EXPECT_EQ(glosses("a b [c] ///x///"), (Texts{"x"}));
    EXPECT_EQ(glosses("a b [c] / /"), (Texts{" "}));
    EXPECT_EQ(glosses("a b [c]/x/"), (Texts{"x"}));
}

TEST(CedictParser, passes_the_reading_through) {
    const auto entry = CedictParser::parseLine("女兒 女儿 [ \tnu:3  er2 xx5\t ] /daughter/");
    ASSERT_TRUE(entry);
    EXPECT_EQ(entry->pinyinNumbered, "nu:3  er2 xx5");
    EXPECT_EQ(entry->pinyinMarked, "nǚ ér xx");
    EXPECT_EQ(CedictParser::parseLine("a b [\u3000c\u00A0] /x/")->pinyinNumbered, "c");
}

TEST(CedictParser, rejects_comments_and_broken_lines) {
    EXPECT_TRUE(rejected("# 中國 中国 [Zhong1 guo2] /China/"));
    EXPECT_TRUE(rejected("#中國 中国 [Zhong1 guo2] /China/"));
    EXPECT_FALSE(rejected(" # 中国 [Zhong1 guo2] /China/"));
    EXPECT_TRUE(rejected("中國 [Zhong1 guo2] /China/"));
    EXPECT_TRUE(rejected("中國[Zhong1 guo2] /China/"));
    EXPECT_TRUE(rejected("中國 中国 Zhong1 guo2] /China/"));
    EXPECT_TRUE(rejected("中國 中国 [Zhong1 guo2 /China/"));
    EXPECT_TRUE(rejected("中國 ]中国 [Zhong1 guo2 /China/"));
    EXPECT_TRUE(rejected("中國 中国 [Zhong1 guo2] China/"));
    EXPECT_TRUE(rejected("中國 中国 [Zhong1 guo2] /China"));
    EXPECT_TRUE(rejected("中國 中国 [Zhong1 guo2] China"));
    EXPECT_TRUE(rejected("中國 中国 [Zhong1 guo2]"));
    EXPECT_TRUE(rejected("中國 中国 [] /China/"));
    EXPECT_TRUE(rejected("中國 中国 [ \t ] /China/"));
    EXPECT_TRUE(rejected("中國 中国 [Zhong1 guo2] //"));
    EXPECT_TRUE(rejected("中國 中国 [Zhong1 guo2] /"));
    EXPECT_TRUE(rejected("中國 中国 [Zhong1 guo2] ////"));
    EXPECT_TRUE(rejected("中國 中国 [Zhong1 guo2] /China\u0600/"));
    EXPECT_TRUE(rejected("中國 中国 [\u200DZhong1 guo2] /China/"));
    EXPECT_TRUE(rejected("中國   [Zhong1 guo2] /China/"));
    EXPECT_TRUE(rejected("\t \t [Zhong1 guo2] /China/"));
    EXPECT_TRUE(rejected(""));
    EXPECT_TRUE(rejected("[]//"));
    EXPECT_TRUE(rejected(" "));
}

TEST(CedictParser, splits_the_headwords_at_the_first_run_of_blanks) {
    const auto entry = CedictParser::parseLine("  甲   乙 丙\t [c]\t /x/ \t");
    ASSERT_TRUE(entry);
    EXPECT_EQ(entry->traditional, "甲");
    EXPECT_EQ(entry->simplified, "乙 丙");
    const auto tabbed = CedictParser::parseLine("\t甲\t \t乙 [c] /x/");
    ASSERT_TRUE(tabbed);
    EXPECT_EQ(tabbed->traditional, "甲");
    EXPECT_EQ(tabbed->simplified, "乙");
}

TEST(CedictParser, a_bracket_or_slash_under_a_mark_is_another_character) {
    EXPECT_EQ(CedictParser::parseLine("a b[\u0301c [d] /x/")->simplified, "b[\u0301c");
    EXPECT_EQ(CedictParser::parseLine("a b [c]\u0301d] /x/")->pinyinNumbered, "c]\u0301d");
    EXPECT_EQ(CedictParser::parseLine("#\u0301a b [c] /x/")->traditional, "#\u0301a");
    EXPECT_EQ(CedictParser::parseLine("a \u0301b c [d] /x/")->traditional, "a \u0301b");
    EXPECT_EQ(glosses("a b [c] /x/\u0301y/"), (Texts{"x/\u0301y"}));
    EXPECT_TRUE(rejected("a b [c] /x/\u0301"));
    EXPECT_TRUE(rejected("a b [c] /\u0301x/"));
    EXPECT_EQ(glosses("a b [c] /x\u0600/y/"), (Texts{"x\u0600/y"}));
}

TEST(CedictParser, every_newline_character_ends_a_line) {
    const std::string line = "甲 乙 [c] /x/";
    for (const char* end : {"\n", "\r", "\r\n", "\v", "\f", "\u0085", "\u2028", "\u2029"}) {
        std::string text;
        text.append(line).append(end).append(line).append(end).append(end).append(line);
        EXPECT_EQ(CedictParser::parse(text).size(), 3U);
        EXPECT_EQ(CedictParser::parse(text).at(1).definitions.at(0).glosses, (Texts{"x"}));
    }
    EXPECT_EQ(CedictParser::parse(line + "\u2027" + line).size(), 1U);
    EXPECT_EQ(CedictParser::parse(line + "\x1C" + line).size(), 1U);
    EXPECT_TRUE(CedictParser::parse("").empty());
    EXPECT_TRUE(CedictParser::parse("\r\n\n\n").empty());
}

TEST(CedictParser, keeps_the_order_and_skips_what_is_broken) {
    const auto entries = CedictParser::parse("# c\n甲 甲 [a1] /1/\nbroken\n乙 乙 [b1] /2/\n");
    ASSERT_EQ(entries.size(), 2U);
    EXPECT_EQ(entries[0].simplified, "甲");
    EXPECT_EQ(entries[1].simplified, "乙");
    EXPECT_NE(entries[0].id, entries[1].id);
    EXPECT_NE(entries[0].definitions[0].id, entries[1].definitions[0].id);
}

TEST(CedictParser, parsing_twice_gives_other_identifiers) {
    const std::string line = "甲 甲 [a1] /1/";
    EXPECT_NE(*CedictParser::parseLine(line), *CedictParser::parseLine(line));
}

TEST(CedictParser, hostile_input_is_harmless) {
    const std::string nul("a\0b c\0 [d\0] /e\0/", 16);
    ASSERT_FALSE(rejected(nul));
    EXPECT_EQ(CedictParser::parseLine(nul)->traditional, std::string("a\0b", 3));
    EXPECT_FALSE(rejected("a\xFF b [c] /x\xED\xA0\x80/"));
    EXPECT_TRUE(rejected(std::string(1000000, '[')));
    EXPECT_TRUE(rejected(std::string(1000000, ' ') + "[a] /b/"));
    const std::string slashes = "a b [c] " + std::string(1000000, '/');
    EXPECT_TRUE(rejected(slashes));
    std::string marks = "a b ";
    for (int count = 0; count < 100000; ++count) {
        marks += "[\u0301";
    }
    EXPECT_TRUE(rejected(marks));
}

}  // namespace
}  // namespace velmora
