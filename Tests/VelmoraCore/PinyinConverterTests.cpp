// SPDX-License-Identifier: MIT
#include "VelmoraCore/PinyinConverter.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace velmora {
namespace {

std::string marked(const std::string& syllable) {
    return PinyinConverter::convertSyllable(syllable).marked;
}

PinyinTone tone(const std::string& syllable) {
    return PinyinConverter::convertSyllable(syllable).tone;
}

TEST(PinyinConverter, converts_a_phrase_syllable_by_syllable) {
    const auto syllables = PinyinConverter::convertPhrase("xue2 xi2");
    ASSERT_EQ(syllables.size(), 2U);
    EXPECT_EQ(syllables[0], (PinyinSyllable{"xue2", "xué", PinyinTone::second}));
    EXPECT_EQ(syllables[1], (PinyinSyllable{"xi2", "xí", PinyinTone::second}));
    EXPECT_EQ(PinyinConverter::markedPhrase("xue2 xi2"), "xué xí");
}

TEST(PinyinConverter, knows_the_marks_of_every_vowel) {
    const std::vector<std::vector<std::string>> table{
        {"a", "\u0101", "\u00E1", "\u01CE", "\u00E0"},
        {"e", "\u0113", "\u00E9", "\u011B", "\u00E8"},
        {"i", "\u012B", "\u00ED", "\u01D0", "\u00EC"},
        {"o", "\u014D", "\u00F3", "\u01D2", "\u00F2"},
        {"u", "\u016B", "\u00FA", "\u01D4", "\u00F9"},
        {"\u00FC", "\u01D6", "\u01D8", "\u01DA", "\u01DC"}};
    for (const auto& row : table) {
        for (int digit = 1; digit <= 4; ++digit) {
            const auto syllable = PinyinConverter::convertSyllable(row[0] + std::to_string(digit));
            EXPECT_EQ(syllable.marked, row[static_cast<std::size_t>(digit)]);
            EXPECT_EQ(static_cast<int>(syllable.tone), digit);
        }
    }
}

TEST(PinyinConverter, places_the_mark) {
    EXPECT_EQ(marked("hao3"), "hǎo");
    EXPECT_EQ(marked("jie2"), "jié");
    EXPECT_EQ(marked("dou1"), "dōu");
    EXPECT_EQ(marked("gou3"), "gǒu");
    EXPECT_EQ(marked("liu2"), "liú");
    EXPECT_EQ(marked("gui4"), "guì");
    EXPECT_EQ(marked("lüe4"), "lüè");
    EXPECT_EQ(marked("zhong1"), "zhōng");
    EXPECT_EQ(marked("aea1"), "āea");
    EXPECT_EQ(marked("iee2"), "iée");
    EXPECT_EQ(marked("xoyou3"), "xǒyou");
    EXPECT_EQ(marked("uo3"), "uǒ");
    EXPECT_EQ(marked("boi4"), "boì");
    EXPECT_EQ(marked("oü1"), "oǖ");
    EXPECT_EQ(marked("lü4"), "lǜ");
}

TEST(PinyinConverter, writes_the_umlaut_and_keeps_the_numbered_form) {
    for (const char* text : {"lu:4", "lv4"}) {
        const auto syllable = PinyinConverter::convertSyllable(text);
        EXPECT_EQ(syllable.numbered, text);
        EXPECT_EQ(syllable.marked, "lǜ");
        EXPECT_EQ(syllable.tone, PinyinTone::fourth);
    }
    EXPECT_EQ(marked("lu:e4"), "lüè");
    EXPECT_EQ(marked("nu:"), "nü");
    EXPECT_EQ(marked("vvu:u:"), "üüüü");
    EXPECT_EQ(marked("LU:4"), "LU:");
    EXPECT_EQ(marked("V4"), "V");
    EXPECT_EQ(marked("u"), "u");
}

TEST(PinyinConverter, a_decomposed_umlaut_is_the_same_letter) {
    EXPECT_EQ(marked("lu\u03084"), "lǜ");
    EXPECT_EQ(marked("lu\u0308"), "lu\u0308");
    EXPECT_EQ(PinyinConverter::convertSyllable("lu\u03084").numbered, "lu\u03084");
}

TEST(PinyinConverter, a_marked_letter_is_none_of_the_vowels) {
    EXPECT_EQ(marked("a\u0323i3"), "a\u0323ǐ");
    EXPECT_EQ(marked("v\u03083"), "v\u0308");
    EXPECT_EQ(marked("u:\u03083"), "ǔ:\u0308");
    EXPECT_EQ(marked("o\u0308u3"), "o\u0308ǔ");
}

TEST(PinyinConverter, every_other_number_is_the_neutral_tone) {
    for (const char* text : {"ma5", "ma", "ma0", "ma6", "ma9"}) {
        EXPECT_EQ(marked(text), "ma") << text;
        EXPECT_EQ(tone(text), PinyinTone::neutral) << text;
    }
    EXPECT_EQ(marked("r5"), "r");
    EXPECT_EQ(tone("r5"), PinyinTone::neutral);
    EXPECT_EQ(marked("ma55"), "ma5");
}

TEST(PinyinConverter, every_character_with_a_whole_number_value_is_a_digit) {
    EXPECT_EQ(marked("ma④"), "mà");
    EXPECT_EQ(marked("ma４"), "mà");
    EXPECT_EQ(marked("ma²"), "má");
    EXPECT_EQ(marked("ma三"), "mǎ");
    EXPECT_EQ(tone("ma三"), PinyinTone::third);
    EXPECT_EQ(marked("ma十"), "ma");
    EXPECT_EQ(marked("ma万"), "ma");
    EXPECT_EQ(marked("ma零"), "ma");
    EXPECT_EQ(marked("ma〇"), "ma");
    EXPECT_EQ(marked("ma𝟒"), "mà");
    EXPECT_EQ(marked("ma½"), "ma½");
    EXPECT_EQ(marked("ma4\u0301"), "ma4\u0301");
    EXPECT_EQ(marked("ma\x31\uFE0F\u20E3"), "ma\x31\uFE0F\u20E3");
}

TEST(PinyinConverter, capital_letters_keep_their_place_and_take_no_mark) {
    EXPECT_EQ(marked("Zhong1"), "Zhōng");
    EXPECT_EQ(marked("An1"), "An");
    EXPECT_EQ(marked("Ou1"), "Oū");
    EXPECT_EQ(marked("Er2"), "Er");
    EXPECT_EQ(tone("Er2"), PinyinTone::second);
}

TEST(PinyinConverter, only_blanks_separate_syllables) {
    EXPECT_EQ(PinyinConverter::convertPhrase("  ni3   hao3 ").size(), 2U);
    EXPECT_EQ(PinyinConverter::markedPhrase("  ni3   hao3 "), "nǐ hǎo");
    EXPECT_EQ(PinyinConverter::convertPhrase("ni3\thao3").size(), 1U);
    EXPECT_EQ(PinyinConverter::convertPhrase("ni3\u3000hao3").size(), 1U);
    EXPECT_EQ(PinyinConverter::convertPhrase("ni3 \u0301hao3").size(), 1U);
    EXPECT_EQ(PinyinConverter::markedPhrase("lü4 lü3"), "lǜ lǚ");
    EXPECT_TRUE(PinyinConverter::convertPhrase("").empty());
    EXPECT_TRUE(PinyinConverter::convertPhrase("   ").empty());
}

TEST(PinyinConverter, text_that_is_no_pinyin_passes_through) {
    EXPECT_EQ(PinyinConverter::convertSyllable(""), (PinyinSyllable{"", "", PinyinTone::neutral}));
    EXPECT_EQ(marked("4"), "");
    EXPECT_EQ(tone("4"), PinyinTone::fourth);
    EXPECT_EQ(marked("·"), "·");
    EXPECT_EQ(marked("，"), "，");
    EXPECT_EQ(marked("C"), "C");
    EXPECT_EQ(marked("3C"), "3C");
    EXPECT_EQ(marked(","), ",");
    EXPECT_EQ(marked("\xFF"), "\uFFFD");
}

TEST(PinyinConverter, long_and_short_syllables_follow_the_same_rules) {
    const std::string padding(40, 'x');
    for (const char* text : {"lu:4", "lv4", "hao3", "dou1", "Er2", "ma5", "4", "u:", "a\r\n"}) {
        const auto shortOne = PinyinConverter::convertSyllable(text);
        const auto longOne = PinyinConverter::convertSyllable(padding + text);
        EXPECT_EQ(longOne.marked, padding + shortOne.marked) << text;
        EXPECT_EQ(longOne.tone, shortOne.tone) << text;
    }
}

}  // namespace
}  // namespace velmora
