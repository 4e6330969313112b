// SPDX-License-Identifier: MIT
#include "Velmora/CommandLine/Core/TextLayout.h"

#include <gtest/gtest.h>

namespace velmora {
namespace {

TEST(TextLayout, CountsColumnsByEastAsianWidth) {
    EXPECT_EQ(columnsOf(""), 0U);
    EXPECT_EQ(columnsOf("abc"), 3U);
    EXPECT_EQ(columnsOf("学习"), 4U);
    EXPECT_EQ(columnsOf("，Ａ"), 4U);
    EXPECT_EQ(columnsOf("xué"), 3U);
    EXPECT_EQ(columnsOf("e\u0301"), 1U);
    EXPECT_EQ(columnsOf("𠮷"), 2U);
    EXPECT_EQ(columnsOf("a\u200Db"), 2U);
}

TEST(TextLayout, PadsByColumns) {
    EXPECT_EQ(padded("学", 4), "学  ");
    EXPECT_EQ(padded("学习", 2), "学习");
}

TEST(TextLayout, ReplacesWhatCouldSteerATerminal) {
    EXPECT_EQ(printable("a\x1b[2Jb"), "a\uFFFD[2Jb");
    EXPECT_EQ(printable("a\nb\tc"), "a\uFFFDb\uFFFDc");
    EXPECT_EQ(printable("\xC2\x9B"), "\uFFFD");
    EXPECT_EQ(printable("学\xFF"), "学\uFFFD");
    EXPECT_EQ(printable(std::string_view("a\0b", 3)), "a\uFFFDb");
    EXPECT_EQ(printable("学习 xué"), "学习 xué");
}

TEST(TextLayout, WrapsAtBlanks) {
    EXPECT_EQ(wrapText("to learn to study", 0, 2, 10), "to learn\n  to study");
    EXPECT_EQ(wrapText("to learn", 0, 2, 8), "to learn");
    EXPECT_EQ(wrapText("to learn", 0, 2, 7), "to\n  learn");
}

TEST(TextLayout, CountsWhatStandsOnTheFirstLineAlready) {
    EXPECT_EQ(wrapText("aaa bbb", 4, 4, 10), "aaa\n    bbb");
    EXPECT_EQ(wrapText("aaa bbb", 4, 4, 11), "aaa bbb");
}

TEST(TextLayout, WrapsBesideWideCharacters) {
    EXPECT_EQ(wrapText("学习中文", 0, 0, 4), "学习\n中文");
    EXPECT_EQ(wrapText("学习中文", 0, 0, 5), "学习\n中文");
    EXPECT_EQ(wrapText("ab学习", 0, 0, 4), "ab学\n习");
}

TEST(TextLayout, KeepsClosingPunctuationWithItsWord) {
    EXPECT_EQ(wrapText("学习中文。", 0, 0, 8), "学习中\n文。");
    EXPECT_EQ(wrapText("(学习)", 0, 0, 20), "(学习)");
}

TEST(TextLayout, LeavesALongRunWhole) {
    EXPECT_EQ(wrapText("a incomprehensibilities b", 0, 1, 6), "a\n incomprehensibilities\n b");
}

TEST(TextLayout, DoesNotWrapWithoutAWidth) {
    const std::string text(500, 'x');
    EXPECT_EQ(wrapText(text + " " + text, 0, 2, 0), text + " " + text);
    EXPECT_EQ(wrapText("two  blanks", 0, 2, 0), "two  blanks");
}

}  // namespace
}  // namespace velmora
