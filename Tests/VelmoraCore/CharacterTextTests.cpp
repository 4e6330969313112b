// SPDX-License-Identifier: MIT
#include "VelmoraCore/CharacterText.h"

#include <gtest/gtest.h>
#include <unicode/brkiter.h>
#include <unicode/normalizer2.h>
#include <unicode/uchar.h>
#include <unicode/unistr.h>

#include <memory>
#include <string>
#include <vector>

#include "Tests/VelmoraCore/RandomTexts.h"
#include "VelmoraCore/CanonicalText.h"
#include "VelmoraCore/CharacterKeys.h"
#include "VelmoraCore/PlainScalar.h"
#include "VelmoraCore/Utf8.h"

namespace velmora {
namespace {

using Texts = std::vector<std::string>;

Texts characters(std::string_view text) {
    const CharacterText split(text);
    Texts parts;
    for (std::size_t index = 0; index < split.count(); ++index) {
        parts.emplace_back(split[index]);
    }
    return parts;
}

/// The characters as the rules alone give them, without the short way for plain text.
Texts charactersByRules(const std::string& text) {
    UErrorCode status = U_ZERO_ERROR;
    static const std::unique_ptr<icu::BreakIterator> iterator(
        icu::BreakIterator::createCharacterInstance(icu::Locale::getRoot(), status));
    const icu::UnicodeString wide = icu::UnicodeString::fromUTF8(text);
    iterator->setText(wide);
    Texts parts;
    for (int start = 0, end = iterator->next(); end != icu::BreakIterator::DONE;
         start = end, end = iterator->next()) {
        wide.tempSubStringBetween(start, end).toUTF8String(parts.emplace_back());
    }
    return parts;
}

TEST(CharacterText, characters_are_what_a_reader_sees) {
    EXPECT_EQ(characters("中文。"), (Texts{"中", "文", "。"}));
    EXPECT_EQ(characters("e\u0301中\uFE00"), (Texts{"e\u0301", "中\uFE00"}));
    EXPECT_EQ(characters("👨‍👩‍👧🇨🇳🇺🇸"),
              (Texts{"👨‍👩‍👧", "🇨🇳", "🇺🇸"}));
    EXPECT_EQ(characters("\u1100\u1161\u11A8가"), (Texts{"\u1100\u1161\u11A8", "가"}));
    EXPECT_EQ(characters("a\r\nb\rc\n"), (Texts{"a", "\r\n", "b", "\r", "c", "\n"}));
    EXPECT_EQ(characters(std::string("\0\0", 2)).size(), 2U);
    EXPECT_TRUE(CharacterText("").empty());
    EXPECT_EQ(CharacterText("").byteOffset(0), 0U);
}

TEST(CharacterText, the_short_way_agrees_with_the_rules) {
    RandomTexts texts(7);
    for (int round = 0; round < 20000; ++round) {
        const std::string text = texts.next(12);
        ASSERT_EQ(characters(text), charactersByRules(text)) << text;
    }
}

TEST(CharacterText, plain_code_points_are_plain_in_every_way) {
    UErrorCode status = U_ZERO_ERROR;
    const icu::Normalizer2* normalizer = icu::Normalizer2::getNFCInstance(status);
    ASSERT_TRUE(U_SUCCESS(status));
    std::size_t plain = 0;
    for (char32_t scalar = 0; scalar <= 0x10FFFF; ++scalar) {
        if (!isPlainScalar(scalar)) {
            continue;
        }
        ++plain;
        const auto code = static_cast<UChar32>(scalar);
        const int kind = u_getIntPropertyValue(code, UCHAR_GRAPHEME_CLUSTER_BREAK);
        ASSERT_TRUE(kind == U_GCB_OTHER || kind == U_GCB_LV || kind == U_GCB_LVT) << code;
        ASSERT_EQ(normalizer->isNormalized(icu::UnicodeString(code), status), true) << code;
        ASSERT_EQ(normalizer->getCombiningClass(code), 0) << code;
        ASSERT_EQ(u_getIntPropertyValue(code, UCHAR_NFC_QUICK_CHECK), UNORM_YES) << code;
    }
    EXPECT_GT(plain, 80000U);
}

TEST(CharacterText, repairs_bytes_that_are_not_utf8) {
    EXPECT_EQ(CharacterText("a\xFF\xE4\xB8中").text(), "a\uFFFD\uFFFD中");
    EXPECT_EQ(CharacterText("\xED\xA0\x80").count(), 3U);
    EXPECT_EQ(CharacterText("\xF0\x9F\x91").text(), "\uFFFD");
}

TEST(CharacterText, slices_are_clamped) {
    const CharacterText text("中e\u0301文");
    EXPECT_EQ(text.slice(1, 2), "e\u0301");
    EXPECT_EQ(text.slice(1, 99), "e\u0301文");
    EXPECT_EQ(text.slice(2, 1), "");
    EXPECT_EQ(text.slice(99, 100), "");
    EXPECT_EQ(text.byteOffset(3), text.text().size());
}

TEST(CharacterText, converts_to_utf16_and_back) {
    const CharacterText text("a👍🏽中");
    EXPECT_EQ(text.count(), 3U);
    EXPECT_EQ(text.utf16Length(), 6U);
    EXPECT_EQ(text.utf16Offset(1), 1U);
    EXPECT_EQ(text.utf16Offset(2), 5U);
    EXPECT_EQ(text.utf16Offset(99), 6U);
    EXPECT_EQ(text.characterAtUtf16Offset(0), 0U);
    EXPECT_EQ(text.characterAtUtf16Offset(1), 1U);
    EXPECT_FALSE(text.characterAtUtf16Offset(2));
    EXPECT_FALSE(text.characterAtUtf16Offset(3));
    EXPECT_EQ(text.characterAtUtf16Offset(5), 2U);
    EXPECT_EQ(text.characterAtUtf16Offset(6), 3U);
    EXPECT_FALSE(text.characterAtUtf16Offset(7));
    EXPECT_EQ(CharacterText("").characterAtUtf16Offset(0), 0U);
    EXPECT_FALSE(CharacterText("").characterAtUtf16Offset(1));
    EXPECT_EQ(utf16Length("é中👍"), 4U);
}

TEST(CharacterText, cuts_utf16_ranges_out) {
    EXPECT_EQ(utf16Substring("a👍中", 0, 1), "a");
    EXPECT_EQ(utf16Substring("a👍中", 1, 2), "👍");
    EXPECT_EQ(utf16Substring("a👍中", 1, 1), "\uFFFD");
    EXPECT_EQ(utf16Substring("a👍中", 2, 2), "\uFFFD中");
    EXPECT_EQ(utf16Substring("a👍中", 3, 99), "中");
    EXPECT_EQ(utf16Substring("a👍中", 0, 0), "");
    EXPECT_EQ(utf16Substring("a👍中", 99, 1), "");
    EXPECT_EQ(utf16Substring("a👍中", static_cast<std::size_t>(-1), static_cast<std::size_t>(-1)),
              "");
    EXPECT_EQ(utf16Substring("a👍中", 0, static_cast<std::size_t>(-1)), "a👍中");
}

TEST(CharacterText, two_ranges_are_chinese) {
    for (const char* text : {"\u4E00", "\u9FFF", "\u3400", "\u4DBF", "中\u0301", "中\uFE00"}) {
        EXPECT_TRUE(isChinese(text)) << text;
    }
    for (const char* text : {"", "a", "\u33FF", "\u4DC0", "\u4DFF", "\uA000", "。", "Ａ", "あ",
                             "\uF900", "\U00020000", "👍", "\xE4\xB8", "\xE4"}) {
        EXPECT_FALSE(isChinese(text)) << text;
    }
    EXPECT_EQ(firstChineseCharacterOffset(CharacterText("e\u0301。中文")), 2U);
    EXPECT_FALSE(firstChineseCharacterOffset(CharacterText("abc")));
}

TEST(CanonicalText, equivalent_spellings_are_equal) {
    EXPECT_TRUE(canonicallyEqual("\u00E9", "e\u0301"));
    EXPECT_TRUE(canonicallyEqual("\uAC00", "\u1100\u1161"));
    EXPECT_TRUE(canonicallyEqual("\uF900", "\u8C48"));
    EXPECT_TRUE(canonicallyEqual("a\u0323\u0301", "a\u0301\u0323"));
    EXPECT_FALSE(canonicallyEqual("e", "e\u0301"));
    EXPECT_FALSE(canonicallyEqual("中", "中\uFE00"));
    EXPECT_FALSE(canonicallyEqual("Ａ", "A"));
    EXPECT_FALSE(canonicallyEqual("", "a"));
    EXPECT_TRUE(canonicallyEqual("\xFF", "\xFF"));
    EXPECT_FALSE(canonicallyEqual("\xFF", "\uFFFD"));
}

TEST(CharacterKeys, equal_keys_are_equivalent_characters) {
    RandomTexts texts(11);
    CharacterKeys keys;
    Texts seen;
    for (int round = 0; round < 300; ++round) {
        for (const std::string& character : characters(texts.next(4))) {
            seen.push_back(character);
            const CharacterKey added = keys.add(character);
            EXPECT_EQ(added, keys.find(character));
        }
    }
    for (std::size_t left = 0; left < seen.size(); left += 3) {
        for (const std::string& right : seen) {
            ASSERT_EQ(keys.find(seen[left]) == keys.find(right),
                      canonicallyEqual(seen[left], right))
                << seen[left] << " " << right;
        }
    }
    EXPECT_EQ(CharacterKeys().find("👨‍👩‍👧"), CharacterKeys::unknown);
}

TEST(CharacterKeys, a_whole_text_gives_the_keys_of_its_characters) {
    RandomTexts texts(13);
    CharacterKeys keys;
    for (int round = 0; round < 2000; ++round) {
        const std::string text = texts.next(8);
        std::vector<CharacterKey> all;
        keys.addAll(text, all);
        std::vector<CharacterKey> single;
        for (const std::string& character : characters(text)) {
            single.push_back(keys.add(character));
        }
        ASSERT_EQ(all, single) << text;
    }
}

}  // namespace
}  // namespace velmora
