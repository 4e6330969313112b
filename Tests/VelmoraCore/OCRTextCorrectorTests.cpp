// SPDX-License-Identifier: MIT
#include "VelmoraCore/OCRTextCorrector.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "Tests/VelmoraCore/RandomTexts.h"
#include "VelmoraCore/CanonicalText.h"
#include "VelmoraCore/CharacterText.h"
#include "VelmoraCore/Utf8.h"

namespace velmora {
namespace {

using References = std::vector<std::string>;
using Alignment = OCRTextCorrector::Alignment;

std::optional<Alignment> align(const std::string& line, const References& references) {
    return OCRTextCorrector::align(line, references);
}

std::optional<std::string> corrected(const std::string& line, const References& references) {
    return OCRTextCorrector::correctedLine(line, references);
}

std::string repeated(std::string_view text, std::size_t times) {
    std::string all;
    for (std::size_t count = 0; count < times; ++count) {
        all += text;
    }
    return all;
}

TEST(OCRTextCorrector, finds_a_line_that_stands_in_a_reference) {
    const References references{"别的话", "我学习中文学习"};
    EXPECT_EQ(align("学习", references), (Alignment{"学习", 1, {1, 3}}));
    EXPECT_FALSE(corrected("学习", references));
}

TEST(OCRTextCorrector, an_exact_place_later_beats_a_close_one_earlier) {
    EXPECT_EQ(align("甲乙丙", {"甲乙丁", "甲乙丙"})->referenceIndex, 1);
}

TEST(OCRTextCorrector, a_few_misread_characters_are_corrected) {
    EXPECT_EQ(corrected("学刁中文", {"我在学习中文。"}), "学习中文");
    EXPECT_EQ(align("学刁中文", {"我在学习中文。"}), (Alignment{"学习中文", 0, {2, 6}}));
    EXPECT_FALSE(corrected("学刁申文", {"我在学习中文。"}));
    EXPECT_EQ(corrected("一二三四五六某某", {"零一二三四五六七八九"}), "一二三四五六七八");
    EXPECT_FALSE(corrected("一二三四五某某某", {"零一二三四五六七八九"}));
    EXPECT_EQ(corrected("一二三四五六某", {"一二三四五六七"}), "一二三四五六七");
    EXPECT_FALSE(corrected("一二三四五某某", {"一二三四五六七"}));
    EXPECT_EQ(corrected("一某三", {"一二三"}), "一二三");
    EXPECT_FALSE(corrected("一某某", {"一二三"}));
    EXPECT_EQ(corrected("一某", {"一二"}), "一二");
    EXPECT_FALSE(corrected("某某", {"一二"}));
}

TEST(OCRTextCorrector, a_single_character_is_always_aligned) {
    EXPECT_EQ(align("某", {"", "甲乙"}), (Alignment{"甲", 1, {0, 1}}));
    EXPECT_EQ(corrected("某", {"甲乙"}), "甲");
}

TEST(OCRTextCorrector, ties_keep_the_earlier_reference_and_window) {
    EXPECT_EQ(align("甲某", {"甲乙甲丙", "甲丁"}), (Alignment{"甲乙", 0, {0, 2}}));
    EXPECT_EQ(align("某乙丙某", {"丁丁丁丁", "甲乙丙某", "某乙丙甲"})->referenceIndex, 1);
}

TEST(OCRTextCorrector, short_and_very_long_references_are_not_compared) {
    EXPECT_FALSE(align("甲乙丙", {"甲乙"}));
    EXPECT_FALSE(align("甲某丙", {repeated("甲乙丙", 3333) + "丁丁"}));
    EXPECT_TRUE(align("甲某丙", {repeated("甲乙丙", 3333) + "丁"}));
    EXPECT_TRUE(align("甲乙丙", {repeated("丁", 20000) + "甲乙丙"}));
    EXPECT_EQ(align("甲某丙", {repeated("甲乙丙", 4000), "甲丁丙"})->referenceIndex, 1);
}

TEST(OCRTextCorrector, nothing_comes_of_nothing) {
    EXPECT_FALSE(align("", {"甲"}));
    EXPECT_FALSE(align("甲", {}));
    EXPECT_FALSE(align("", {}));
    EXPECT_FALSE(align("甲", {""}));
}

TEST(OCRTextCorrector, equivalent_spellings_stand_for_each_other) {
    EXPECT_EQ(align("caf\u00E9", {"le cafe\u0301"}), (Alignment{"caf\u00E9", 0, {3, 7}}));
    EXPECT_FALSE(corrected("cafe\u0301", {"le caf\u00E9"}));
    EXPECT_EQ(corrected("xe\u0301yz", {"w\u00E9yz"}), "w\u00E9yz");
    EXPECT_TRUE(align("\u8C48中文字", {"\uF900中文字"}));
}

TEST(OCRTextCorrector, an_occurrence_begins_and_ends_between_characters) {
    EXPECT_EQ(align("cafe", {"cafe\u0301", "cafe"})->referenceIndex, 1);
    EXPECT_EQ(align("中文", {"中文\uFE00", "中文"})->referenceIndex, 1);
    EXPECT_EQ(align("\U0001F1E8\U0001F1F3",
                    {"\U0001F1FA\U0001F1E8\U0001F1F3\U0001F1FA", "\U0001F1E8\U0001F1F3"})
                  ->referenceIndex,
              1);
}

TEST(OCRTextCorrector, positions_count_characters) {
    EXPECT_EQ(align("中文", {"👨‍👩‍👧e\u0301\r\n中文"}),
              (Alignment{"中文", 0, {3, 5}}));
}

TEST(OCRTextCorrector, long_lines_are_counted_in_full) {
    const std::string line = repeated("甲乙", 400);
    EXPECT_EQ(corrected(line + "某", {"丁" + line + "丙"}), line + "丙");
    const std::string wrong = repeated("甲丙", 400);
    EXPECT_FALSE(corrected(wrong, {line}));
    EXPECT_EQ(align(repeated("甲", 256) + "某", {repeated("甲", 257)})->text, repeated("甲", 257));
}

TEST(OCRTextCorrector, a_long_line_of_different_characters_agrees_with_no_unknown_one) {
    std::string line;
    std::string reference;
    for (std::size_t place = 0; place < 256; ++place) {
        const auto character = static_cast<char32_t>(0x4E00 + place);
        appendUtf8(line, character);
        // One character of four is another, and the last one too: just too many.
        appendUtf8(reference, place % 4 == 0 || place == 255 ? character + 0x1000 : character);
    }
    EXPECT_FALSE(align(line, {reference}));
}

TEST(OCRTextCorrector, equality_looks_at_every_field) {
    const Alignment alignment{"甲", 0, {0, 1}};
    EXPECT_NE(alignment, (Alignment{"乙", 0, {0, 1}}));
    EXPECT_NE(alignment, (Alignment{"甲", 1, {0, 1}}));
    EXPECT_NE(alignment, (Alignment{"甲", 0, {0, 2}}));
}

/// The rules written down as they are told, one character after the other.
std::optional<Alignment> alignLiterally(const std::string& ocrLine, const References& references) {
    const CharacterText line(ocrLine);
    const std::size_t length = line.count();
    if (length == 0 || references.empty()) {
        return std::nullopt;
    }
    std::optional<Alignment> best;
    std::size_t bestMatches = 0;
    for (const bool exact : {true, false}) {
        for (std::size_t index = 0; index < references.size(); ++index) {
            const CharacterText reference(references[index]);
            for (std::size_t start = 0; start + length <= reference.count(); ++start) {
                std::size_t matches = 0;
                for (std::size_t place = 0; place < length; ++place) {
                    matches += static_cast<std::size_t>(
                        canonicallyEqual(reference[start + place], line[place]));
                }
                const MatchedTextRange range{static_cast<long long>(start),
                                             static_cast<long long>(start + length)};
                if (exact && matches == length) {
                    return Alignment{ocrLine, static_cast<long long>(index), range};
                }
                if (!exact && (!best || matches > bestMatches)) {
                    best = {std::string(reference.slice(start, start + length)),
                            static_cast<long long>(index), range};
                    bestMatches = matches;
                }
            }
        }
    }
    const std::size_t allowed = length < 4 ? 1 : length / 4;
    return best && length - bestMatches <= allowed ? best : std::nullopt;
}

TEST(OCRTextCorrector, agrees_with_the_literal_rules) {
    RandomTexts texts(17);
    std::size_t aligned = 0;
    for (int round = 0; round < 4000; ++round) {
        References references;
        for (std::size_t count = texts.below(4); count > 0; --count) {
            references.push_back(texts.next(20));
        }
        std::string line = texts.next(5);
        if (!references.empty() && texts.below(2) == 0) {
            const CharacterText source(references[texts.below(references.size())]);
            const std::size_t start = texts.below(source.count() + 1);
            line = std::string(source.slice(start, start + 1 + texts.below(8)));
            line += texts.next(1);
        }
        const auto expected = alignLiterally(line, references);
        ASSERT_EQ(align(line, references), expected) << line;
        aligned += static_cast<std::size_t>(expected.has_value());
    }
    EXPECT_GT(aligned, 500U);
}

}  // namespace
}  // namespace velmora
