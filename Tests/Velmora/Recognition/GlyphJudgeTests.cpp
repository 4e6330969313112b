// SPDX-License-Identifier: MIT
#include "Velmora/Platform/Recognition/GlyphJudge.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "Tests/Velmora/Recognition/FakeReader.h"
#include "Velmora/Platform/Recognition/CodePoint.h"
#include "Velmora/Platform/Recognition/LineRecognizer.h"

namespace velmora {
namespace {

constexpr double thirdCharacter = 20 + 2 * em + em / 2;
constexpr const char32_t* someGlyphs = U"他中文好甲子丙我们們";

ReadLine readAt(FakeReader& reader, const std::u32string& shown, double x) {
    LineRecognizer lines(reader, nullptr);
    const FoundLines found = pictureOf(shown);
    return lines.recognize(found, found.lines[0], x);
}

TEST(GlyphJudge, ClearFormsNeedOneReading) {
    FakeReader reader;
    reader.glyphs = someGlyphs;
    reader.texts[ScriptModel::simplified] = {{"他", "中", "文", "好"}};
    const ReadLine read = readAt(reader, U"他中文好", thirdCharacter);
    ASSERT_FALSE(read.candidates.empty());
    EXPECT_EQ(textOf(read.candidates[0].characters), "他中文好");
    EXPECT_GE(read.candidates[0].confidence, 0.99F);
    EXPECT_EQ(reader.reads, 1);
}

TEST(GlyphJudge, TheFormPutsAMisreadingRight) {
    FakeReader reader;
    reader.glyphs = someGlyphs;
    reader.texts[ScriptModel::simplified] = {{"他", "中", "甲", "好"}};
    const ReadLine read = readAt(reader, U"他中文好", thirdCharacter);
    ASSERT_FALSE(read.candidates.empty());
    EXPECT_EQ(textOf(read.candidates[0].characters), "他中文好");
}

TEST(GlyphJudge, ACharacterThatWasLeftOutIsFound) {
    const FoundLines found = pictureOf(U"他中文好我");
    PlacedLine line;
    for (const auto& [text, place] : {std::pair("他", 0), {"中", 1}, {"好", 3}, {"我", 4}}) {
        line.push_back({text, 0.95F, {20 + place * em, 20 + place * em + em - 4}});
    }
    FakeReader reader;
    reader.glyphs = someGlyphs;
    ReadingWindow window{0, 4, 1, found.lines[0].box};
    const auto verdict = GlyphJudge(reader).judge(found, line, window, thirdCharacter, {});
    ASSERT_TRUE(verdict);
    EXPECT_EQ(textOf(line), "他中文好我");
    EXPECT_EQ(window.focus, 2U);
    EXPECT_EQ(verdict->changed, 1U);
    EXPECT_TRUE(verdict->settled);
}

TEST(GlyphJudge, WhatIsLikeNoFormIsNotAccepted) {
    FakeReader reader;
    reader.glyphs = U"他中好";
    reader.texts[ScriptModel::simplified] = {{"他", "中", "甲", "好"}};
    reader.texts[ScriptModel::traditional] = {{"他", "中", "甲", "好"}};
    const ReadLine read = readAt(reader, U"他中文好", thirdCharacter);
    ASSERT_FALSE(read.candidates.empty());
    EXPECT_LT(read.candidates[0].confidence, 0.99F);
    EXPECT_GT(reader.reads, 1) << "doubts are looked into";
}

/// Below this a reading counts for nothing.
constexpr float silence = 0.3F;

TEST(GlyphJudge, WhatIsLikeNoFormAndReadThisWayAndThatIsKeptSilent) {
    FakeReader reader;
    reader.glyphs = U"他中好";
    reader.texts[ScriptModel::simplified] = {{"他", "中", "甲", "好"}};
    reader.texts[ScriptModel::traditional] = {{"他", "中", "乙", "好"}};
    const ReadLine read = readAt(reader, U"他中文好", thirdCharacter);
    ASSERT_FALSE(read.candidates.empty());
    for (const LineCandidate& candidate : read.candidates) {
        EXPECT_LT(candidate.confidence, silence);
    }
    EXPECT_GE(readAt(reader, U"他中文好", 20 + em / 2).candidates.at(0).confidence, silence)
        << "the characters beside it are there";
}

TEST(GlyphJudge, WhatHasALikelyRivalIsNeitherSureNorSilent) {
    FakeReader reader;
    std::u32string shown;
    std::vector<std::string> read;
    for (char32_t place = 0; place < 20; ++place) {
        shown += U'一' + place * 7;
        if (place >= 4 && place < 17) {
            read.push_back(utf8Of(shown.back()));
        }
    }
    reader.glyphs = shown;
    reader.texts[ScriptModel::simplified] = {read};
    const auto candidates = readAt(reader, shown, 20 + 10 * em + em / 2).candidates;
    ASSERT_EQ(candidates.size(), 2U);
    EXPECT_GE(candidates[0].confidence, silence);
    EXPECT_LT(candidates[0].confidence, 0.99F);
    EXPECT_LT(candidates[1].confidence, candidates[0].confidence);
}

TEST(GlyphJudge, OfALongLineThePieceAroundThePointIsReadAndNoCharacterCut) {
    FakeReader reader;
    const std::u32string shown = U"他中文好甲子丙我们們他中文好甲子丙我们們";
    const FoundLines found = pictureOf(shown);
    LineRecognizer lines(reader, nullptr);
    const PixelBox box = lines.recognize(found, found.lines[0], 20 + 10 * em + em / 2).box;
    EXPECT_GT(box.left, found.lines[0].box.left);
    EXPECT_LT(box.right, found.lines[0].box.right);
    for (const int edge : {box.left, box.right}) {
        EXPECT_EQ(found.ink.columnCounts({edge, box.top, edge + 1, box.bottom}).at(0), 0) << edge;
    }
}

TEST(GlyphJudge, TheScriptFollowsTheForms) {
    FakeReader reader;
    reader.glyphs = U"她們說國語们说国语";
    reader.texts[ScriptModel::simplified] = {{"她", "们", "说", "国", "语"}};
    reader.texts[ScriptModel::traditional] = {{"她", "們", "說", "國", "語"}};
    LineRecognizer lines(reader, nullptr);
    const FoundLines found = pictureOf(U"她們說國語");
    const ReadLine read = lines.recognize(found, found.lines[0], thirdCharacter);
    ASSERT_FALSE(read.candidates.empty());
    EXPECT_EQ(textOf(read.candidates[0].characters), "她們說國語");
    const int before = reader.reads;
    lines.recognize(found, found.lines[0], thirdCharacter);
    EXPECT_EQ(reader.reads, before + 1) << "the next line is read in that script at once";
}

TEST(GlyphJudge, ALetterOfAnotherScriptIsNoCharacter) {
    FakeReader reader;
    reader.glyphs = U"他中文好は";
    reader.texts[ScriptModel::simplified] = {{"他", "中", "文", "好"}};
    reader.texts[ScriptModel::traditional] = {{"他", "中", "文", "好"}};
    const ReadLine read = readAt(reader, U"他中は好", thirdCharacter);
    ASSERT_FALSE(read.candidates.empty());
    EXPECT_EQ(textOf(read.candidates[0].characters), "他中は好");
    for (const LineCandidate& candidate : read.candidates) {
        EXPECT_EQ(candidate.characters[2].text, "は") << "nor may it be one in second place";
    }
}

TEST(GlyphJudge, LettersOfOtherScriptsTakeNothingFromCharacters) {
    FakeReader reader;
    reader.glyphs = U"他中文好はの서울";
    reader.texts[ScriptModel::simplified] = {{"他", "中", "文", "好"}};
    const ReadLine read = readAt(reader, U"他中文好", thirdCharacter);
    ASSERT_FALSE(read.candidates.empty());
    EXPECT_EQ(textOf(read.candidates[0].characters), "他中文好");
    EXPECT_GE(read.candidates[0].confidence, 0.99F);
}

TEST(GlyphJudge, NoFormsNoVerdict) {
    FakeReader reader;
    PlacedLine line{{"他", 0.9F, {20, 40}}, {"中", 0.9F, {44, 64}}};
    const FoundLines found = pictureOf(U"他中");
    ReadingWindow window{0, 2, 0, found.lines[0].box};
    EXPECT_FALSE(GlyphJudge(reader).judge(found, line, window, 30, {}));
    EXPECT_EQ(textOf(line), "他中");
}

}  // namespace
}  // namespace velmora
