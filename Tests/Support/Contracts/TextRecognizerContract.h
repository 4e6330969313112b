// SPDX-License-Identifier: MIT
#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <limits>
#include <memory>
#include <optional>
#include <ostream>
#include <string>
#include <vector>

#include "Velmora/Platform/TextRecognizer.h"
#include "VelmoraCore/CharacterText.h"

namespace velmora {

/// A recogniser to hold against the contract of every recogniser: which one, how it is made, and a
/// picture with a text that it reads. Instantiate `TextRecognizerContract` with one for each
/// backend.
struct TextRecognizerSubject {
    std::string name;
    std::function<std::shared_ptr<TextRecognizer>()> make;
    std::function<Image()> picture;
    Point point;       ///< A pixel of the picture on the text.
    std::string text;  ///< Part of what is read there.

    friend std::ostream& operator<<(std::ostream& out, const TextRecognizerSubject& subject) {
        return out << subject.name;
    }
};

class TextRecognizerContract : public ::testing::TestWithParam<TextRecognizerSubject> {
  protected:
    using Lines = std::optional<std::vector<TextObservation>>;

    Lines recognize() { return recognizer->recognize(GetParam().picture(), GetParam().point, 3); }

    static void expectSound(const Lines& lines, std::size_t candidateLimit) {
        for (const TextObservation& line : lines.value_or(std::vector<TextObservation>())) {
            EXPECT_TRUE(line.boundingBox.isFinite());
            EXPECT_LE(line.candidates.size(), candidateLimit);
            for (const auto& candidate : line.candidates) {
                ASSERT_NE(candidate, nullptr);
                expectSound(*candidate);
            }
        }
    }

    static void expectSound(const RecognizedText& candidate) {
        const CharacterText text(candidate.string());
        EXPECT_EQ(text.text(), candidate.string()) << "valid UTF-8";
        EXPECT_GE(candidate.confidence(), 0.0F);
        EXPECT_LE(candidate.confidence(), 1.0F);
        for (std::size_t index = 0; index < text.count(); ++index) {
            const auto box = candidate.boundingBox(index, index + 1);
            EXPECT_TRUE(!box || box->isFinite());
        }
        EXPECT_FALSE(candidate.boundingBox(text.count(), text.count()));
        EXPECT_FALSE(candidate.boundingBox(text.count(), text.count() + 1));
    }

    /// The first reading that holds the expected text.
    static RecognizedText::Pointer find(const Lines& lines, const std::string& text) {
        for (const TextObservation& line : lines.value_or(std::vector<TextObservation>())) {
            for (const auto& candidate : line.candidates) {
                if (candidate->string().find(text) != std::string::npos) {
                    return candidate;
                }
            }
        }
        return nullptr;
    }

    std::shared_ptr<TextRecognizer> recognizer = GetParam().make();
};

GTEST_ALLOW_UNINSTANTIATED_PARAMETERIZED_TEST(TextRecognizerContract);

TEST_P(TextRecognizerContract, ReadsWhatStandsThere) {
    const Lines lines = recognize();
    ASSERT_TRUE(lines);
    expectSound(lines, 3);
    const auto reading = find(lines, GetParam().text);
    ASSERT_NE(reading, nullptr);
    const auto box = reading->boundingBox(0, CharacterText(reading->string()).count());
    ASSERT_TRUE(box);
    EXPECT_TRUE(box->intersects({0, 0, 1, 1}));
}

TEST_P(TextRecognizerContract, KeepsToTheLimitOfReadings) {
    expectSound(recognizer->recognize(GetParam().picture(), GetParam().point, 1), 1);
}

TEST_P(TextRecognizerContract, StillReadsItWhenItIsVerified) {
    const Lines lines = recognize();
    ASSERT_TRUE(lines);
    const Lines verified = recognizer->verify(GetParam().picture(), *lines, GetParam().point, 3);
    ASSERT_TRUE(verified);
    expectSound(verified, 3);
    EXPECT_NE(find(verified, GetParam().text), nullptr);
    expectSound(recognizer->verify(Image(), *lines, GetParam().point, 3), 3);
}

TEST_P(TextRecognizerContract, SurvivesPicturesWithoutText) {
    expectSound(recognizer->recognize(Image(), std::nullopt, 3), 3);
    expectSound(recognizer->recognize(Image(1, 1, {0xFFFFFFFF}), Point{0, 0}, 3), 3);
    expectSound(recognizer->recognize(Image(1, 300, std::vector<std::uint32_t>(300, 0xFF000000)),
                                      std::nullopt, 3),
                3);
}

TEST_P(TextRecognizerContract, SurvivesHintsThatPointNowhere) {
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const double infinity = std::numeric_limits<double>::infinity();
    for (const Point point : {Point{-1e9, 5}, Point{5, 1e9}, Point{nan, 5}, Point{5, infinity}}) {
        expectSound(recognizer->recognize(GetParam().picture(), point, 3), 3);
    }
}

}  // namespace velmora
