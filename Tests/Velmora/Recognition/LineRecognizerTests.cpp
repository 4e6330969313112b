// SPDX-License-Identifier: MIT
#include "Velmora/Platform/Recognition/LineRecognizer.h"

#include <gtest/gtest.h>

#include <deque>
#include <map>

#include "Tests/Velmora/Recognition/Drawing.h"
#include "Velmora/Platform/Recognition/LineImage.h"
#include "Velmora/Platform/Recognition/RememberingLineReader.h"

namespace velmora {
namespace {

constexpr int em = 24;

/// A character's own form: bars at places that depend on its code point.
void drawForm(GrayImage& image, int left, int top, int size, char32_t character) {
    const int stroke = std::max(2, size / 10);
    drawFrame(image, {left, top, left + size, top + size}, stroke, 0);
    const auto code = static_cast<unsigned>(character);
    for (unsigned bit = 0; bit < 6; ++bit) {
        if ((code >> bit) % 2 == 1) {
            const int y = top + (static_cast<int>(bit) + 1) * size / 8;
            fill(image, {left, y, left + size / 2, y + stroke}, 0);
        } else {
            const int x = left + size / 2 + static_cast<int>(bit) * size / 16;
            fill(image, {x, top, x + stroke, top + size}, 0);
        }
    }
}

FoundLines pictureOf(const std::u32string& text) {
    GrayImage image(static_cast<int>(text.size()) * em + 40, 64, 255);
    for (std::size_t i = 0; i < text.size(); ++i) {
        drawForm(image, 20 + static_cast<int>(i) * em, 20, em - 4, text[i]);
    }
    FoundLines found;
    found.ink = findInk(image);
    found.lines = {{{20, 20, 20 + static_cast<int>(text.size()) * em - 4, 20 + em - 4}}};
    found.image = std::move(image);
    return found;
}

/// Answers prepared texts in turn and draws the forms from above.
class FakeReader : public LineReader {
  public:
    std::map<ScriptModel, std::deque<std::vector<std::string>>> texts;
    int reads = 0;
    float confidence = 0.97F;
    bool hasFonts = true;

    std::optional<LineReading> read(const GrayImage& line, ScriptModel model) override {
        ++reads;
        auto& answers = texts[model];
        if (answers.empty()) {
            return std::nullopt;
        }
        const std::vector<std::string> text = answers.front();
        if (answers.size() > 1) {
            answers.pop_front();
        }
        LineReading reading;
        const double width =
            (line.width() - 2.0 * LineImage::margin) / static_cast<double>(text.size());
        for (std::size_t i = 0; i < text.size(); ++i) {
            const double left = LineImage::margin + static_cast<double>(i) * width;
            reading.push_back({text[i], confidence, left, left + width});
        }
        return reading;
    }

    std::optional<GrayImage> drawCharacter(char32_t character, ScriptModel /*style*/) override {
        if (!hasFonts) {
            return std::nullopt;
        }
        GrayImage image(48, 48, 255);
        drawForm(image, 4, 4, 40, character);
        return image;
    }
};

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

TEST(LineRecognizer, AFailingReaderGivesNoCandidates) {
    FakeReader reader;
    LineRecognizer lines(reader, nullptr);
    const FoundLines found = pictureOf(U"他中文好");
    EXPECT_TRUE(lines.recognize(found, found.lines[0], thirdCharacter).candidates.empty());
}

}  // namespace
}  // namespace velmora
