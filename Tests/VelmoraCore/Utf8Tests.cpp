// SPDX-License-Identifier: MIT
#include "VelmoraCore/Utf8.h"

#include <gtest/gtest.h>

#include <random>
#include <string>

#include "Tests/VelmoraCore/RandomTexts.h"
#include "VelmoraCore/Utf8Scan.h"

namespace velmora {
namespace {

TEST(Utf8, refuses_what_is_not_well_formed) {
    const std::string padding(70, 'x');
    for (const char* text : {"\x80",
                             "\xBF",
                             "\xC0\x80",
                             "\xC1\xBF",
                             "\xC2",
                             "\xC2x",
                             "\xE0\x80\x80",
                             "\xE0\x9F\xBF",
                             "\xE4\xB8",
                             "\xED\xA0\x80",
                             "\xED\xBF\xBF",
                             "\xF0\x80\x80\x80",
                             "\xF0\x8F\xBF\xBF",
                             "\xF4\x90\x80\x80",
                             "\xF5\x80\x80\x80",
                             "\xFE",
                             "\xFF",
                             "\xF0\x9F\x91",
                             "\xE4\xB8\xAD\xAD",
                             "\xC2\x80\x80",
                             "\xF0\x9F\x91\x8D\x80"}) {
        EXPECT_FALSE(isValidUtf8(text)) << text;
        for (std::size_t shift = 0; shift < 40; ++shift) {
            EXPECT_FALSE(isValidUtf8(padding.substr(shift) + text + padding)) << text << shift;
            EXPECT_FALSE(isValidUtf8(padding.substr(shift) + text)) << text << shift;
        }
    }
}

TEST(Utf8, accepts_every_code_point) {
    std::string all;
    for (char32_t scalar = 0; scalar <= 0x10FFFF; ++scalar) {
        std::string one;
        appendUtf8(one, scalar);
        const Utf8Scalar read = utf8ScalarAt(one.data());
        const bool surrogate = scalar >= 0xD800 && scalar <= 0xDFFF;
        ASSERT_EQ(read.value, surrogate ? 0xFFFD : scalar);
        ASSERT_EQ(read.length, one.size());
        ASSERT_EQ(utf8ScalarBefore(one.data() + one.size()).value, read.value);
        ASSERT_TRUE(isValidUtf8(one));
        all += one;
    }
    EXPECT_TRUE(Utf8Scan::of(all).valid);
    EXPECT_TRUE(Utf8Scan::portable(all).valid);
    std::string beyond;
    appendUtf8(beyond, 0x110000);
    EXPECT_EQ(beyond, "\uFFFD");
}

TEST(Utf8, vectors_and_plain_code_agree) {
    RandomTexts texts(3);
    std::mt19937 random(5);
    for (int round = 0; round < 30000; ++round) {
        std::string text(random() % 40, 'x');
        text += texts.next(40);
        for (std::size_t count = random() % 3; count > 0 && !text.empty(); --count) {
            text[random() % text.size()] = static_cast<char>(random());
        }
        const Utf8Scan vectors = Utf8Scan::of(text);
        const Utf8Scan portable = Utf8Scan::portable(text);
        ASSERT_EQ(vectors.valid, portable.valid);
        if (portable.valid) {
            ASSERT_EQ(vectors.hasRareLineEnds, portable.hasRareLineEnds);
        }
    }
}

TEST(Utf8, sees_rare_line_ends) {
    const std::string padding(64, 'x');
    for (const char* text : {"\r", "\rx", "\n\r", "\v", "\f", "\u0085", "\u2028", "\u2029"}) {
        for (std::size_t shift = 0; shift < 40; ++shift) {
            const std::string whole = padding.substr(shift) + text + padding;
            EXPECT_TRUE(Utf8Scan::of(whole).hasRareLineEnds) << shift;
            EXPECT_TRUE(Utf8Scan::portable(whole).hasRareLineEnds) << shift;
        }
    }
    for (const char* text : {"", "\n", "\r\n", "\n\n", "\u2027", "\u0084", "\u202A", "\u0105"}) {
        for (std::size_t shift = 0; shift < 40; ++shift) {
            EXPECT_FALSE(Utf8Scan::of(padding.substr(shift) + text + padding).hasRareLineEnds);
        }
    }
}

TEST(Utf8, repairs_the_largest_parts_at_once) {
    EXPECT_EQ(repairedUtf8("a\xF0\x9F\x91z"), "a\uFFFDz");
    EXPECT_EQ(repairedUtf8("\xE0\x80\x80"), "\uFFFD\uFFFD\uFFFD");
    EXPECT_EQ(repairedUtf8("\xF0\x9F\xC2\x85"), "\uFFFD\u0085");
    EXPECT_EQ(repairedUtf8("中文"), "中文");
    EXPECT_EQ(repairedUtf8(""), "");
    EXPECT_TRUE(isValidUtf8(repairedUtf8("\xFF\xFE\xC2\xED\xBF\xBF\xF4\x90")));
}

}  // namespace
}  // namespace velmora
