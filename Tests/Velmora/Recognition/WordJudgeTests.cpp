// SPDX-License-Identifier: MIT
#include "Velmora/Platform/Recognition/WordJudge.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "Velmora/Platform/Recognition/CodePoint.h"
#include "Velmora/Platform/Recognition/OptionSupport.h"

namespace velmora {
namespace {

/// A place whose ink fits the first option best, the others by so much less.
PlacedCharacter placeOf(const std::u32string& options, float behind = 0.03F, float fit = 0.9F) {
    PlacedCharacter character;
    character.text = utf8Of(options[0]);
    character.fit = fit;
    for (std::size_t i = 0; i < options.size(); ++i) {
        character.options.push_back(
            {options[i], fit - behind * static_cast<float>(i), 0.95F, 0, 0});
    }
    character.exact = character.options[0].exact;
    return character;
}

WordPatterns patternsOf(const std::vector<std::string>& words) {
    WordPatterns patterns;
    for (const std::string& word : words) {
        patterns.add(word);
    }
    patterns.finish();
    return patterns;
}

ReadingWindow wholeOf(const PlacedLine& line) {
    return {0, line.size(), 0, {}};
}

TEST(OptionSupport, TheBetterTheFontIsKnownTheMoreTheInkSays) {
    const auto lead = [](float fit) {
        return supportOf({U'末', 0.80F, 0.95F, 0, 0}, fit) -
               supportOf({U'未', 0.76F, 0.95F, 0.95F, 0}, fit);
    };
    EXPECT_GT(lead(0.99F), 0) << "the ink outweighs the reading";
    EXPECT_LT(lead(0.7F), 0) << "the reading outweighs the ink";
}

TEST(OptionSupport, LongerWordsSpeakLouder) {
    EXPECT_EQ(supportOfWord(0), 0);
    EXPECT_EQ(supportOfWord(1), 0);
    EXPECT_GT(supportOfWord(2), 0);
    EXPECT_GT(supportOfWord(3), supportOfWord(2));
    EXPECT_GT(supportOfWord(4), supportOfWord(3));
}

TEST(WordJudge, AWordDecidesBetweenNearlyEqualCharacters) {
    const WordPatterns words = patternsOf({"挖掘"});
    PlacedLine line{placeOf(U"挖"), placeOf(U"据掘")};
    WordJudge(&words).choose(line, wholeOf(line));
    EXPECT_EQ(textOf(line), "挖掘");
    EXPECT_EQ(line[1].runnerUp, "据");
    EXPECT_FLOAT_EQ(line[1].exact, 0.87F);
}

TEST(WordJudge, NoWordOutweighsClearInk) {
    const WordPatterns words = patternsOf({"挖掘"});
    PlacedLine line{placeOf(U"挖", 0.03F, 0.99F), placeOf(U"据掘", 0.15F, 0.99F)};
    WordJudge(&words).choose(line, wholeOf(line));
    EXPECT_EQ(textOf(line), "挖据");
    EXPECT_GT(line[1].lead, 3);
}

TEST(WordJudge, TwoDoubtfulCharactersMakeAWordTogether) {
    const WordPatterns words = patternsOf({"未解"});
    PlacedLine line{placeOf(U"末未"), placeOf(U"觧解")};
    WordJudge(&words).choose(line, wholeOf(line));
    EXPECT_EQ(textOf(line), "未解");
}

TEST(WordJudge, WithoutWordsTheInkDecides) {
    PlacedLine line{placeOf(U"挖"), placeOf(U"据掘")};
    WordJudge(nullptr).choose(line, wholeOf(line));
    EXPECT_EQ(textOf(line), "挖据");
}

TEST(WordJudge, MarksStayWhatTheyAre) {
    const WordPatterns words = patternsOf({"挖掘"});
    PlacedLine line{placeOf(U"挖"), placeOf(U"据掘")};
    line[1].text = ",";
    WordJudge(&words).choose(line, wholeOf(line));
    EXPECT_EQ(textOf(line), "挖,");
}

TEST(WordJudge, ADoubtfulNeighbourThatMayLengthenTheWordTakesItsCertainty) {
    const WordPatterns words = patternsOf({"期末考", "考试"});
    PlacedLine line{placeOf(U"期"), placeOf(U"未末"), placeOf(U"考"), placeOf(U"试")};
    const std::vector<float> doubt{1, 0.5F, 1, 1};
    const float lengthened = WordJudge(&words).certaintyOfWord(line, 2, doubt);
    EXPECT_LT(lengthened, 0.6F);
    PlacedLine other{placeOf(U"期"), placeOf(U"未朱"), placeOf(U"考"), placeOf(U"试")};
    EXPECT_GT(WordJudge(&words).certaintyOfWord(other, 2, doubt), lengthened)
        << "none of what it may be makes a longer word";
}

TEST(WordJudge, DoubtsWithinTheWordCountInFull) {
    const WordPatterns words = patternsOf({"期末考", "考试"});
    PlacedLine line{placeOf(U"期"), placeOf(U"末"), placeOf(U"考"), placeOf(U"试")};
    EXPECT_FLOAT_EQ(WordJudge(&words).certaintyOfWord(line, 1, {0.9F, 1, 0.9F, 1}), 0.81F);
}

TEST(WordJudge, WhatIsFarAwayDoesNotMatter) {
    PlacedLine line;
    for (int i = 0; i < 9; ++i) {
        line.push_back(placeOf(U"中"));
    }
    std::vector<float> certainties(line.size(), 1.0F);
    certainties[8] = 0.1F;
    EXPECT_FLOAT_EQ(WordJudge(nullptr).certaintyOfWord(line, 1, certainties), 1);
}

TEST(WordJudge, TellsHowLongTheWordWouldBe) {
    const WordPatterns words = patternsOf({"期末", "期末考"});
    PlacedLine line{placeOf(U"期"), placeOf(U"未"), placeOf(U"考")};
    EXPECT_EQ(WordJudge(&words).longestWord(line, 1, U'末'), 3U);
    EXPECT_EQ(WordJudge(&words).longestWord(line, 1, U'未'), 0U);
    EXPECT_FALSE(WordJudge(&words).standsInWord(line, 1));
}

}  // namespace
}  // namespace velmora
