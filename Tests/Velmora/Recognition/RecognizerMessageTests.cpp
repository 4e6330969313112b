// SPDX-License-Identifier: MIT
#include "Velmora/Platform/Recognition/RecognizerMessage.h"

#include <gtest/gtest.h>

#include <limits>
#include <random>

namespace velmora {
namespace {

using Kind = RecognizerMessage::Kind;

TEST(RecognizerMessage, GoesThroughTheWireUnchanged) {
    const GrayImage line(30, 48, 77);
    RecognizerMessage sent = makeReadLine({ScriptModel::traditional, line});
    sent.sequence = 9;
    const std::vector<std::uint8_t> bytes = encodeMessage(sent);
    auto received = decodeHeader(std::span(bytes).first(RecognizerMessage::headerSize));
    ASSERT_TRUE(received);
    ASSERT_EQ(received->body.size(), bytes.size() - RecognizerMessage::headerSize);
    std::copy(bytes.begin() + RecognizerMessage::headerSize, bytes.end(), received->body.begin());
    EXPECT_EQ(received->sequence, 9U);
    const auto request = parseReadLine(*received);
    ASSERT_TRUE(request);
    EXPECT_EQ(request->model, ScriptModel::traditional);
    EXPECT_EQ(request->line, line);
}

TEST(RecognizerMessage, BeginningALineIsNotReadingIt) {
    const ReadLineRequest line{ScriptModel::traditional, GrayImage(30, 48, 77)};
    const RecognizerMessage begin = makeBeginLine(line);
    const std::vector<std::uint8_t> bytes = encodeMessage(begin);
    ASSERT_TRUE(decodeHeader(std::span(bytes).first(RecognizerMessage::headerSize)));
    ASSERT_TRUE(parseBeginLine(begin));
    EXPECT_EQ(parseBeginLine(begin)->line, line.line);
    EXPECT_FALSE(parseReadLine(begin));
    EXPECT_FALSE(parseBeginLine(makeReadLine(line)));
}

TEST(RecognizerMessage, CarriesReadingsDrawingsAndReports) {
    const LineReading reading{{"中", 0.5F, 1, 20}, {"a", 1, 21.5, 30}};
    EXPECT_EQ(parseReading(makeReading(reading)), reading);
    const auto drawing =
        parseDrawCharacter(makeDrawCharacter({U'們', ScriptModel::simplified, 48}));
    ASSERT_TRUE(drawing);
    EXPECT_EQ(drawing->character, U'們');
    const auto report = parseModelReport(
        makeModelReport(Kind::loaded, {ScriptModel::traditional, ModelState::missing}));
    ASSERT_TRUE(report);
    EXPECT_EQ(report->state, ModelState::missing);
    EXPECT_EQ(parsePicture(makePicture(GrayImage(5, 4, 3))), GrayImage(5, 4, 3));
}

TEST(RecognizerMessage, IsRefusedWhenCutShort) {
    for (const RecognizerMessage& whole :
         {makeReadLine({ScriptModel::simplified, GrayImage(4, 4)}),
          makeReading({{"中", 0.5F, 1, 20}}), makePicture(GrayImage(3, 3)),
          makeDrawCharacter({U'中', ScriptModel::simplified, 8})}) {
        for (std::size_t length = 0; length < whole.body.size(); ++length) {
            RecognizerMessage cut = whole;
            cut.body.resize(length);
            EXPECT_FALSE(parseReadLine(cut) || parseReading(cut) || parsePicture(cut) ||
                         parseDrawCharacter(cut));
        }
    }
}

TEST(RecognizerMessage, IsRefusedWhenItsFiguresAreImpossible) {
    EXPECT_FALSE(parseReading(makeReading({{"中", 1.5F, 0, 1}})));
    EXPECT_FALSE(
        parseReading(makeReading({{"中", 0.5F, std::numeric_limits<double>::infinity(), 1}})));
    EXPECT_FALSE(parseReading(makeReading({{std::string(100, 'x'), 0.5F, 0, 1}})));
    EXPECT_FALSE(parseDrawCharacter(makeDrawCharacter({U'中', ScriptModel::simplified, 100000})));
    EXPECT_FALSE(parsePicture(makePicture(GrayImage(10, 300))));
    EXPECT_FALSE(parseReading(makePicture(GrayImage(1, 1))));
}

TEST(RecognizerMessage, HeadersAreRefusedWhenForeignOrTooLarge) {
    std::vector<std::uint8_t> bytes = encodeMessage({Kind::ready, 1, {}});
    ASSERT_TRUE(decodeHeader(bytes));
    EXPECT_FALSE(decodeHeader(std::span(bytes).first(15)));
    std::vector<std::uint8_t> foreign = bytes;
    foreign[0] ^= 1;
    EXPECT_FALSE(decodeHeader(foreign));
    std::vector<std::uint8_t> unknown = bytes;
    unknown[4] = 99;
    EXPECT_FALSE(decodeHeader(unknown));
    std::vector<std::uint8_t> large = bytes;
    large[15] = 0x7F;
    EXPECT_FALSE(decodeHeader(large));
}

TEST(RecognizerMessage, RandomBytesDoNoHarm) {
    std::mt19937 random(11);
    for (int round = 0; round < 2000; ++round) {
        RecognizerMessage message;
        message.kind = static_cast<Kind>(1 + random() % 8);
        message.body.resize(random() % 64);
        for (std::uint8_t& byte : message.body) {
            byte = static_cast<std::uint8_t>(random() % 4 == 0 ? random() : 0);
        }
        (void)parseReadLine(message);
        (void)parseReading(message);
        (void)parsePicture(message);
        (void)parseDrawCharacter(message);
        (void)parseModelReport(message);
    }
    SUCCEED();
}

}  // namespace
}  // namespace velmora
