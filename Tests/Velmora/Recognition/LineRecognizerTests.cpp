// SPDX-License-Identifier: MIT
#include "Velmora/Platform/Recognition/LineRecognizer.h"

#include <gtest/gtest.h>

#include <array>
#include <string>
#include <vector>

#include "Tests/Velmora/Recognition/FakeReader.h"
#include "Velmora/Platform/Recognition/CodePoint.h"
#include "Velmora/Platform/Recognition/RememberingLineReader.h"

namespace velmora {
namespace {

constexpr double thirdCharacter = 20 + 2 * em + em / 2;

TEST(LineRecognizer, AgreeingReadingsAreAccepted) {
    FakeReader reader;
    reader.texts[ScriptModel::simplified] = {{"他", "中", "文", "好"}};
    reader.texts[ScriptModel::traditional] = {{"他", "中", "文", "好"}};
    LineRecognizer lines(reader, nullptr);
    const FoundLines found = pictureOf(U"他中文好");
    const ReadLine read = lines.recognize(found, found.lines[0], thirdCharacter);
    ASSERT_EQ(read.candidates.size(), 1U);
    EXPECT_EQ(textOf(read.candidates[0].characters), "他中文好");
    EXPECT_GE(read.candidates[0].confidence, 0.99F);
    EXPECT_EQ(characterAt(read.candidates[0].characters, thirdCharacter, 1), 2);
}

TEST(LineRecognizer, TheInkChoosesTheScript) {
    FakeReader reader;
    reader.texts[ScriptModel::simplified] = {{"我", "们", "好"}};
    reader.texts[ScriptModel::traditional] = {{"我", "們", "好"}};
    LineRecognizer lines(reader, nullptr);
    for (const auto& [shown, text] :
         {std::pair<std::u32string, std::string>{U"我們好", "我們好"}, {U"我们好", "我们好"}}) {
        const FoundLines found = pictureOf(shown);
        const ReadLine read = lines.recognize(found, found.lines[0], 20 + em + em / 2);
        ASSERT_FALSE(read.candidates.empty());
        EXPECT_EQ(textOf(read.candidates[0].characters), text);
    }
}

TEST(LineRecognizer, ReadingsThatContradictEachOtherAreNotAccepted) {
    FakeReader reader;
    reader.hasFonts = false;
    reader.texts[ScriptModel::simplified] = {{"他", "中", "甲", "好"}, {"他", "中", "子", "好"}};
    reader.texts[ScriptModel::traditional] = {{"他", "中", "丙", "好"}};
    LineRecognizer lines(reader, nullptr);
    const FoundLines found = pictureOf(U"他中文好");
    const ReadLine read = lines.recognize(found, found.lines[0], thirdCharacter);
    ASSERT_FALSE(read.candidates.empty());
    EXPECT_LT(read.candidates[0].confidence, 0.99F);
}

TEST(LineRecognizer, TheInkSettlesADispute) {
    FakeReader reader;
    reader.texts[ScriptModel::simplified] = {{"他", "中", "甲", "好"}, {"他", "中", "文", "好"}};
    reader.texts[ScriptModel::traditional] = {{"他", "中", "甲", "好"}};
    LineRecognizer lines(reader, nullptr);
    const FoundLines found = pictureOf(U"他中文好");
    const ReadLine read = lines.recognize(found, found.lines[0], thirdCharacter);
    ASSERT_FALSE(read.candidates.empty());
    EXPECT_EQ(textOf(read.candidates[0].characters), "他中文好");
}

TEST(LineRecognizer, AWordReplacesACharacterThatStandsAlone) {
    FakeReader reader;
    reader.texts[ScriptModel::simplified] = {{"肉", "壽", "桿", "菌"}};
    reader.texts[ScriptModel::traditional] = {{"肉", "壽", "桿", "菌"}};
    WordPatterns words;
    words.add("肉毒桿菌");
    words.finish();
    LineRecognizer lines(reader, &words);
    const FoundLines found = pictureOf(U"肉毒桿菌");
    const ReadLine read = lines.recognize(found, found.lines[0], thirdCharacter);
    ASSERT_FALSE(read.candidates.empty());
    EXPECT_EQ(textOf(read.candidates[0].characters), "肉毒桿菌");
    const FoundLines other = pictureOf(U"肉壽桿菌");
    EXPECT_EQ(
        textOf(lines.recognize(other, other.lines[0], thirdCharacter).candidates[0].characters),
        "肉壽桿菌");
}

TEST(LineRecognizer, ConfidenceGrowsWithTheReadersOwn) {
    float last = 0;
    for (const float confidence : {0.2F, 0.5F, 0.7F, 0.85F, 0.99F}) {
        FakeReader reader;
        reader.confidence = confidence;
        reader.texts[ScriptModel::simplified] = {{"他", "中", "文", "好"}};
        reader.texts[ScriptModel::traditional] = {{"他", "中", "文", "好"}};
        LineRecognizer lines(reader, nullptr);
        const FoundLines found = pictureOf(U"他中文好");
        const ReadLine read = lines.recognize(found, found.lines[0], thirdCharacter);
        ASSERT_FALSE(read.candidates.empty());
        EXPECT_GT(read.candidates[0].confidence, last);
        last = read.candidates[0].confidence;
    }
    EXPECT_GE(last, 0.99F);
    EXPECT_LE(last, 1.0F);
}

TEST(LineRecognizer, WithoutAPointALineIsReadOnce) {
    FakeReader reader;
    reader.texts[ScriptModel::simplified] = {{"他", "中", "文", "好"}};
    LineRecognizer lines(reader, nullptr);
    const FoundLines found = pictureOf(U"他中文好");
    const ReadLine read = lines.recognize(found, found.lines[0], std::nullopt);
    ASSERT_EQ(read.candidates.size(), 1U);
    EXPECT_EQ(reader.reads, 1);
    EXPECT_LT(read.candidates[0].confidence, 0.99F);
}

TEST(LineRecognizer, WithoutFormsTheReaderMustBeSureOfEachCharacter) {
    for (const float confidence : {0.71F, 0.69F}) {
        FakeReader reader;
        reader.hasFonts = false;
        reader.confidence = confidence;
        reader.texts[ScriptModel::simplified] = {{"他", "中", "文", "好"}};
        reader.texts[ScriptModel::traditional] = {{"他", "中", "文", "好"}};
        LineRecognizer lines(reader, nullptr);
        const FoundLines found = pictureOf(U"他中文好");
        const ReadLine read = lines.recognize(found, found.lines[0], thirdCharacter);
        ASSERT_EQ(read.candidates.size(), 1U);
        EXPECT_EQ(read.candidates[0].confidence >= 0.99F, confidence > 0.7F) << confidence;
        EXPECT_GE(read.candidates[0].confidence, 0.3F);
    }
}

TEST(RememberingLineReader, ForgetsTheOldestLines) {
    FakeReader reader;
    reader.texts[ScriptModel::simplified] = {{"中"}};
    RememberingLineReader remembering(reader);
    const auto lineOf = [](int number) {
        return GrayImage(40 + number, 48, static_cast<std::uint8_t>(255 - number));
    };
    for (int number = 0; number < 60; ++number) {
        remembering.read(lineOf(number), ScriptModel::simplified);
    }
    EXPECT_EQ(reader.reads, 60);
    remembering.read(lineOf(59), ScriptModel::simplified);
    EXPECT_EQ(reader.reads, 60);
    remembering.read(lineOf(0), ScriptModel::simplified);
    EXPECT_EQ(reader.reads, 61) << "what is kept does not grow for ever";
}

TEST(RememberingLineReader, ReadsTheSameLineOnce) {
    FakeReader reader;
    reader.texts[ScriptModel::simplified] = {{"中"}, {"文"}};
    RememberingLineReader remembering(reader);
    const GrayImage line(40, 48, 255);
    const auto first = remembering.read(line, ScriptModel::simplified);
    EXPECT_EQ(remembering.read(line, ScriptModel::simplified), first);
    EXPECT_EQ(reader.reads, 1);
    EXPECT_NE(remembering.read(GrayImage(40, 48, 254), ScriptModel::simplified), first);
    EXPECT_FALSE(remembering.read(line, ScriptModel::traditional));
    EXPECT_FALSE(remembering.read(line, ScriptModel::traditional));
    EXPECT_EQ(reader.reads, 4);
}

TEST(RememberingLineReader, ComparesTheSameCellsOnce) {
    FakeReader reader;
    RememberingLineReader remembering(reader);
    CellsToMatch request{pictureOf(U"中文").image, em, {{{20, 40}, {}}}};
    EXPECT_FALSE(remembering.matchCells(request));
    reader.glyphs = U"中文";
    const auto matches = remembering.matchCells(request);
    ASSERT_TRUE(matches);
    EXPECT_EQ(remembering.matchCells(request)->cells, matches->cells);
    EXPECT_EQ(reader.comparisons, 2);

    const auto isComparedAnew = [&] {
        const int before = reader.comparisons;
        remembering.matchCells(request);
        return reader.comparisons == before + 1;
    };
    request.cells.front().candidates.push_back(U'中');
    EXPECT_TRUE(isComparedAnew());
    request.cells.front().cell.right += 2;
    EXPECT_TRUE(isComparedAnew());
    request.em += 1;
    EXPECT_TRUE(isComparedAnew());
    request.strip.at(0, 0) ^= 1;
    EXPECT_TRUE(isComparedAnew());
}

TEST(RememberingLineReader, BeginsOnlyWhatItDoesNotKnow) {
    FakeReader reader;
    reader.texts[ScriptModel::simplified] = {{"中"}};
    RememberingLineReader remembering(reader);
    const GrayImage line(40, 48, 255);
    EXPECT_FALSE(remembering.begin(line, ScriptModel::simplified)) << "there is nobody to do it";
    reader.canBegin = true;
    EXPECT_TRUE(remembering.begin(line, ScriptModel::simplified));
    EXPECT_EQ(reader.begun, 1);
    remembering.read(line, ScriptModel::simplified);
    EXPECT_TRUE(remembering.begin(line, ScriptModel::simplified));
    EXPECT_EQ(reader.begun, 1);
}

TEST(LineRecognizer, OneReadingIsEnoughWhereTheFormsAreCertain) {
    FakeReader reader;
    reader.glyphs = U"他中文好甲丙";
    reader.texts[ScriptModel::simplified] = {{"他", "甲", "丙", "好"}};
    reader.texts[ScriptModel::traditional] = {{"他", "中", "文", "好"}};
    LineRecognizer lines(reader, nullptr);
    const FoundLines found = pictureOf(U"他中文好");
    const ReadLine read = lines.recognize(found, found.lines[0], thirdCharacter);
    ASSERT_FALSE(read.candidates.empty());
    EXPECT_EQ(textOf(read.candidates[0].characters), "他中文好");
    EXPECT_GE(read.candidates[0].confidence, 0.99F);
    EXPECT_EQ(reader.reads, 1);
}

TEST(LineRecognizer, LearnsTheScriptAfterItsAnswer) {
    FakeReader reader;
    reader.canBegin = true;
    reader.glyphs = U"他中文好甲丙";
    reader.texts[ScriptModel::simplified] = {{"他", "甲", "丙", "好"}};
    reader.texts[ScriptModel::traditional] = {{"他", "中", "文", "好"}};
    LineRecognizer lines(reader, nullptr);
    const FoundLines found = pictureOf(U"他中文好");
    lines.recognize(found, found.lines[0], thirdCharacter);
    EXPECT_EQ(reader.reads, 1);
    EXPECT_EQ(reader.begun, 1) << "the other script's reading goes on";
    // It is looked at first, and shows that the other script is the right one, which says all.
    lines.recognize(found, found.lines[0], thirdCharacter);
    EXPECT_EQ(reader.reads, 3);
    EXPECT_EQ(reader.begun, 1);
    lines.recognize(found, found.lines[0], thirdCharacter);
    EXPECT_EQ(reader.reads, 4);
}

TEST(LineRecognizer, KeepsTheScriptThatReadsNoWorse) {
    FakeReader reader;
    reader.canBegin = true;
    reader.glyphs = U"他中文好甲丙";
    reader.texts[ScriptModel::simplified] = {{"他", "甲", "丙", "好"}};
    reader.texts[ScriptModel::traditional] = {{"他", "丙", "甲", "好"}};
    LineRecognizer lines(reader, nullptr);
    const FoundLines found = pictureOf(U"他中文好");
    lines.recognize(found, found.lines[0], thirdCharacter);
    lines.recognize(found, found.lines[0], thirdCharacter);
    EXPECT_EQ(reader.begun, 2) << "it is as doubtful as before";
}

TEST(LineRecognizer, KeepsSilentAboutForeignScripts) {
    FakeReader reader;
    reader.hasFonts = false;
    reader.texts[ScriptModel::simplified] = {{"a", "b", "中", "d", "e"}, {"a", "b", "c", "d", "e"}};
    reader.texts[ScriptModel::traditional] = {{"a", "b", "丙", "d", "e"}};
    LineRecognizer lines(reader, nullptr);
    const FoundLines found = pictureOf(U"abcde");
    const ReadLine read = lines.recognize(found, found.lines[0], thirdCharacter);
    ASSERT_FALSE(read.candidates.empty());
    EXPECT_LT(read.candidates[0].confidence, 0.3F);
}

/// Below this a reading counts for nothing; from the other on it is what is there.
constexpr float silence = 0.3F;
constexpr float sureness = 0.99F;

/// In whose fonts the forms are less like the ink: it is written in another one, or by hand.
class UnlikeReader : public FakeReader {
  public:
    float likeness = 1;

    std::optional<MatchedCells> matchCells(const CellsToMatch& request) override {
        std::optional<MatchedCells> result = FakeReader::matchCells(request);
        if (result) {
            result->fontFit *= likeness;
            for (std::vector<GlyphMatch>& matches : result->cells) {
                for (GlyphMatch& match : matches) {
                    match.exact *= likeness;
                }
            }
        }
        return result;
    }
};

/// The confidence of a line at one of its characters where this is shown and that is read, the
/// first time, the second time, and with the model of the other script.
float confidenceAt(FakeReader& reader, const std::u32string& shown,
                   const std::array<std::u32string, 3>& readings, int character) {
    std::array<std::vector<std::string>, 3> texts;
    for (std::size_t i = 0; i < texts.size(); ++i) {
        for (const char32_t each : readings[i]) {
            texts[i].push_back(utf8Of(each));
        }
    }
    reader.texts[ScriptModel::simplified] = {texts[0], texts[1]};
    reader.texts[ScriptModel::traditional] = {texts[2]};
    LineRecognizer lines(reader, nullptr);
    const FoundLines found = pictureOf(shown);
    const ReadLine read = lines.recognize(found, found.lines[0], 20 + character * em + em / 2);
    return read.candidates.empty() ? -1 : read.candidates[0].confidence;
}

/// Where it is read as it is shown, each time.
float confidenceAt(FakeReader& reader, const std::u32string& shown, int character) {
    return confidenceAt(reader, shown, {shown, shown, shown}, character);
}

TEST(LineRecognizer, ACharacterByItselfMustBeLikeItsForm) {
    UnlikeReader reader;
    reader.glyphs = U"他中文好甲子丙";
    reader.likeness = 0.7F;
    EXPECT_LT(confidenceAt(reader, U"中", 0), silence);
    EXPECT_LT(confidenceAt(reader, U"a中b", 1), silence) << "letters tell nothing of its font";
    EXPECT_GE(confidenceAt(reader, U"中文", 0), sureness) << "another one tells of their font";
    reader.likeness = 0.8F;
    EXPECT_GE(confidenceAt(reader, U"中", 0), sureness);
}

TEST(LineRecognizer, ALetterIsSureOnlyAmongCharacters) {
    FakeReader reader;
    reader.glyphs = U"他中文好甲子丙";
    EXPECT_GE(confidenceAt(reader, U"他文b好子", 2), sureness);
    EXPECT_LT(confidenceAt(reader, U"ab中de", 1), silence);
}

TEST(LineRecognizer, ACharacterInAForeignTextMustBeSure) {
    UnlikeReader reader;
    reader.glyphs = U"他文好子一万与丕东丣个丱丸丿乆乍乔乛乢乩买乷乾亅";
    reader.likeness = 0.9F;
    // Its form has rivals that are much like it, and the reader takes it for another.
    const std::u32string misread = U"他文甲好子";
    const float among = confidenceAt(reader, U"他文乔好子", {misread, misread, misread}, 2);
    EXPECT_GE(among, silence);
    EXPECT_LT(among, sureness);
    const std::u32string foreign = U"ab甲de";
    EXPECT_LT(confidenceAt(reader, U"ab乔de", {foreign, foreign, foreign}, 2), silence);
    EXPECT_GE(confidenceAt(reader, U"ab文de", 2), sureness);
}

TEST(LineRecognizer, WithoutFormsToCompareALetterIsSureOnlyAmongCharacters) {
    FakeReader reader;
    EXPECT_GE(confidenceAt(reader, U"他文b好子", 2), sureness);
    EXPECT_LT(confidenceAt(reader, U"ab中de", 1), sureness);
    EXPECT_GE(confidenceAt(reader, U"ab中de", 2), sureness);
}

TEST(LineRecognizer, WithoutFormsToCompareADoubtfulCharacterInAForeignTextIsKeptSilent) {
    FakeReader reader;
    const float among =
        confidenceAt(reader, U"他文中好子", {U"他文丩好子", U"他文c好子", U"他文f好子"}, 2);
    EXPECT_GE(among, silence);
    EXPECT_LT(among, sureness);
    EXPECT_LT(confidenceAt(reader, U"ab中de", {U"ab丩de", U"abcde", U"abfde"}, 2), silence);
}

TEST(LineRecognizer, AFailingReaderGivesNoCandidates) {
    FakeReader reader;
    LineRecognizer lines(reader, nullptr);
    const FoundLines found = pictureOf(U"他中文好");
    EXPECT_TRUE(lines.recognize(found, found.lines[0], thirdCharacter).candidates.empty());
}

}  // namespace
}  // namespace velmora
