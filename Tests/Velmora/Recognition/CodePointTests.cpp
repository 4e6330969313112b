// SPDX-License-Identifier: MIT
#include "Velmora/Platform/Recognition/CodePoint.h"

#include <gtest/gtest.h>

#include <string_view>

namespace velmora {
namespace {

TEST(CodePoint, IsReadFromTheBeginningOfAText) {
    EXPECT_EQ(firstCodePoint("a中"), U'a');
    EXPECT_EQ(firstCodePoint("é"), U'é');
    EXPECT_EQ(firstCodePoint("中文"), U'中');
    EXPECT_EQ(firstCodePoint("\U00020000"), char32_t{0x20000});
    EXPECT_EQ(firstCodePoint(""), 0U);
    EXPECT_EQ(firstCodePoint(std::string_view("中").substr(0, 2)), char32_t{0xFFFD});
    for (const char* damaged : {"\xFF", "\x80", "\xE4\xB8", "\xE4\xB8z", "\xC3", "\xF0\xA0\x80"}) {
        EXPECT_EQ(firstCodePoint(damaged), char32_t{0xFFFD});
    }
}

TEST(CodePoint, AllOfATextGoThereAndBack) {
    for (const char32_t point :
         {U'\x7F', U'\x80', char32_t{0x7FF}, char32_t{0x800}, char32_t{0xFFFD}, char32_t{0xFFFF},
          char32_t{0x10000}, char32_t{0x10FFFF}}) {
        EXPECT_EQ(firstCodePoint(utf8Of(point)), point);
    }
    EXPECT_EQ(codePointsOf("a中é\U00020000"), U"a中é\U00020000");
    EXPECT_EQ(codePointsOf("中\xFF文"), U"中\uFFFD文");
    EXPECT_EQ(codePointsOf("\uFFFD中"), U"\uFFFD中");
    EXPECT_EQ(codePointsOf("中\xE6\x96"), U"中\uFFFD\uFFFD");
    EXPECT_EQ(codePointsOf(""), U"");
}

TEST(CodePoint, TellsScriptsApart) {
    for (const char32_t han : {U'一', char32_t{0x9FFF}, char32_t{0x3400}, char32_t{0x4DBF},
                               char32_t{0xF900}, char32_t{0x20000}}) {
        EXPECT_TRUE(isHan(han));
    }
    for (const char32_t other :
         {U'a', U'は', U'가', U'，', char32_t{0x3007}, char32_t{0x4DC0}, char32_t{0xA000}, U'々'}) {
        EXPECT_FALSE(isHan(other));
    }
    for (const char32_t letter : {U'は', U'ア', U'가', char32_t{0xFF71}}) {
        EXPECT_TRUE(isKanaOrHangul(letter));
    }
    EXPECT_FALSE(isKanaOrHangul(U'一'));
    for (const char32_t mark : {U'，', U'。', U'！', U'“', U'…'}) {
        EXPECT_TRUE(isFullWidthPunctuation(mark));
    }
    EXPECT_FALSE(isFullWidthPunctuation(U','));
}

}  // namespace
}  // namespace velmora
