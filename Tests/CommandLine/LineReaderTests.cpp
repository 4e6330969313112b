// SPDX-License-Identifier: MIT
#include "Velmora/CommandLine/Core/LineReader.h"

#include <gtest/gtest.h>

#include <sstream>
#include <vector>

namespace velmora {
namespace {

/// Every line of a text; "!" stands for one that is too long.
std::vector<std::string> linesOf(const std::string& text, std::size_t limit) {
    std::istringstream stream(text);
    LineReader reader(stream, limit);
    std::vector<std::string> lines;
    while (const auto line = reader.next()) {
        lines.push_back(line->tooLong ? "!" : line->text);
    }
    return lines;
}

using Lines = std::vector<std::string>;

TEST(LineReader, SplitsAtLineFeeds) {
    EXPECT_EQ(linesOf("", 3), Lines{});
    EXPECT_EQ(linesOf("a\nb", 3), (Lines{"a", "b"}));
    EXPECT_EQ(linesOf("a\n\nb\n", 3), (Lines{"a", "", "b"}));
}

TEST(LineReader, TakesACarriageReturnOffTheEnd) {
    EXPECT_EQ(linesOf("a\r\nb\r", 3), (Lines{"a", "b"}));
    EXPECT_EQ(linesOf("a\rb\r\r\n", 4), (Lines{"a\rb\r"}));
}

TEST(LineReader, TheLimitCountsWithoutTheLineEnd) {
    EXPECT_EQ(linesOf("abc\nabc\r\nabcd\nabcd\r\nabcde\nab\n", 3),
              (Lines{"abc", "abc", "!", "!", "!", "ab"}));
    EXPECT_EQ(linesOf("abcd", 3), Lines{"!"});
}

TEST(LineReader, KeepsNulBytes) {
    EXPECT_EQ(linesOf(std::string("a\0b\n", 4), 3), Lines{std::string("a\0b", 3)});
}

}  // namespace
}  // namespace velmora
