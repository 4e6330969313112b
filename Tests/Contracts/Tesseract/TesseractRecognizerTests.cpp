// SPDX-License-Identifier: MIT
#include "Velmora/Platform/Linux/Tesseract/TesseractRecognizer.h"

#include <gtest/gtest.h>
#include <signal.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <memory>
#include <random>

#include "Tests/Contracts/Tesseract/Pictures.h"
#include "Tests/Contracts/Tesseract/SharedRecognizer.h"
#include "Tests/Support/TemporaryFolder.h"
#include "Velmora/Platform/Recognition/WordPatterns.h"

namespace velmora {
namespace {

using std::chrono::milliseconds;
using testing::sharedRecognizer;

/// One that compares characters with their forms, as it does when it knows words.
TesseractRecognizer& recognizerWithForms() {
    static const auto shared = [] {
        static const testing::TemporaryFolder folder;
        auto words = std::make_shared<WordPatterns>();
        for (const char* word : {"图书馆", "圖書館", "每天", "上午", "开门", "開門", "我们", "我們",
                                 "一起", "公园", "散步", "检查", "更新", "日本", "日本语"}) {
            words->add(word);
        }
        words->finish();
        TesseractRecognizer::Options options;
        options.answerLimit = milliseconds(20000);
        options.glyphFolder = folder.path().string();
        auto made = std::make_unique<TesseractRecognizer>(options);
        made->start();
        made->waitUntilReady(milliseconds(60000));
        made->setWords(words);
        made->waitForGlyphs(milliseconds(60000));
        return made;
    }();
    return *shared;
}

std::string bestText(const std::optional<std::vector<TextObservation>>& observations) {
    if (!observations || observations->empty() || observations->front().candidates.empty()) {
        return {};
    }
    return observations->front().candidates.front()->string();
}

struct Hover {
    const char* picture;
    Point point;
    const char* text;
    std::size_t offset;
    bool sure;
};

class ReadsPictures : public ::testing::TestWithParam<Hover> {};

void expectRead(const Hover& hover, const Image& image,
                const std::optional<std::vector<TextObservation>>& observations) {
    ASSERT_EQ(bestText(observations), hover.text);
    const RecognizedText& text = *observations->front().candidates.front();
    EXPECT_EQ(text.confidence() >= 0.99F, hover.sure) << text.confidence();
    const auto box = text.boundingBox(hover.offset, hover.offset + 1);
    ASSERT_TRUE(box);
    const Point normalized{hover.point.x / image.width(), 1 - hover.point.y / image.height()};
    EXPECT_TRUE(box->contains(normalized));
    EXPECT_LE(observations->front().candidates.size(), 3U);
}

TEST_P(ReadsPictures, TheTextAndTheCharacterUnderThePoint) {
    const Hover& hover = GetParam();
    const Image image = fixturePicture(hover.picture);
    ASSERT_FALSE(image.isEmpty());
    for (TesseractRecognizer* one : {&sharedRecognizer(), &recognizerWithForms()}) {
        expectRead(hover, image, one->recognize(image, hover.point, 3));
    }
}

INSTANTIATE_TEST_SUITE_P(
    Fixtures, ReadsPictures,
    ::testing::Values(Hover{"simplified-light", {161, 55}, "图书馆每天上午开门", 2, true},
                      Hover{"traditional-dark", {261, 55}, "圖書館每天上午開門", 7, true},
                      Hover{"subtitle", {242, 55}, "我们一起去公园散步", 5, true},
                      Hover{"button", {202, 55}, "检查更新", 1, true}),
    [](const auto& test) {
        std::string name = test.param.picture;
        name.erase(std::remove(name.begin(), name.end(), '-'), name.end());
        return name;
    });

TEST(TesseractRecognizer, ReadsALineOnceMoreAtAnotherPoint) {
    const Image image = fixturePicture("simplified-light");
    const auto first = sharedRecognizer().recognize(image, Point{130, 55}, 3);
    ASSERT_TRUE(first);
    const auto again = sharedRecognizer().verify(image, *first, {280, 55}, 3);
    EXPECT_EQ(bestText(again), "图书馆每天上午开门");
    const auto away = sharedRecognizer().verify(image, *first, {10, 5}, 3);
    ASSERT_TRUE(away);
    EXPECT_TRUE(away->empty());
}

TEST(TesseractRecognizer, ReadsEverythingWithoutAPoint) {
    EXPECT_EQ(bestText(sharedRecognizer().recognize(fixturePicture("button"), std::nullopt, 3)),
              "检查更新");
}

TEST(TesseractRecognizer, HonoursTheCandidateLimit) {
    const Image image = fixturePicture("traditional-dark");
    const auto one = sharedRecognizer().recognize(image, Point{220, 55}, 1);
    ASSERT_TRUE(one && !one->empty());
    EXPECT_EQ(one->front().candidates.size(), 1U);
    EXPECT_FALSE(sharedRecognizer().recognize(image, Point{220, 55}, 0));
}

TEST(TesseractRecognizer, IsNeverSureOfOtherScripts) {
    for (const char* name : {"english", "mixed"}) {
        const Image image = fixturePicture(name);
        for (const auto& [one, x] : {std::pair{&sharedRecognizer(), 120.0},
                                     {&sharedRecognizer(), 180.0},
                                     {&recognizerWithForms(), 120.0},
                                     {&recognizerWithForms(), 180.0}}) {
            const auto observations = one->recognize(image, Point{x, 55}, 3);
            ASSERT_TRUE(observations);
            for (const TextObservation& observation : *observations) {
                for (const auto& candidate : observation.candidates) {
                    EXPECT_LT(candidate->confidence(), 0.99F) << candidate->string();
                }
            }
        }
    }
}

/// Whoever asks need not look any closer then.
TEST(TesseractRecognizer, TellsOfALineWithoutChineseToo) {
    for (TesseractRecognizer* one : {&sharedRecognizer(), &recognizerWithForms()}) {
        const auto observations = one->recognize(fixturePicture("english"), Point{120, 55}, 3);
        ASSERT_TRUE(observations);
        EXPECT_FALSE(observations->empty());
    }
}

TEST(TesseractRecognizer, FindsNothingWhereNothingStands) {
    for (const auto& [width, height] :
         {std::pair{1, 1}, {1, 500}, {500, 1}, {300, 200}, {20000, 300}, {300, 20000}}) {
        const Image image = plainPicture(width, height, 0xFF808080);
        for (const Point point : {Point{0, 0}, Point{width / 2.0, height / 2.0}, Point{-50, 1e9}}) {
            const auto observations = sharedRecognizer().recognize(image, point, 3);
            ASSERT_TRUE(observations);
            EXPECT_TRUE(observations->empty());
        }
    }
    EXPECT_FALSE(sharedRecognizer().recognize(Image(), Point{0, 0}, 3));
    const Point nowhere{std::nan(""), 0};
    EXPECT_TRUE(sharedRecognizer().recognize(plainPicture(50, 50, 0xFFFFFFFF), nowhere, 3));
}

TEST(TesseractRecognizer, SurvivesNoise) {
    std::mt19937 random(3);
    std::vector<std::uint32_t> pixels(900 * 500);
    for (std::uint32_t& pixel : pixels) {
        pixel = 0xFF000000U | (random() & 0xFFFFFFU);
    }
    const Image image(900, 500, std::move(pixels));
    const auto observations = sharedRecognizer().recognize(image, Point{450, 250}, 3);
    ASSERT_TRUE(observations);
    for (const TextObservation& observation : *observations) {
        for (const auto& candidate : observation.candidates) {
            EXPECT_LT(candidate->confidence(), 0.99F);
        }
    }
}

TEST(TesseractRecognizer, AnswersNothingWhereItsWorkerGoesAndGoesOnWithAnother) {
    TesseractRecognizer recognizer({{}, {}, milliseconds(20000)});
    recognizer.start();
    ASSERT_TRUE(recognizer.waitUntilReady(milliseconds(60000)));
    const Image image = fixturePicture("simplified-light");
    const Point point{220, 55};
    const std::string before = bestText(recognizer.recognize(image, point, 3));
    EXPECT_FALSE(before.empty());
    ASSERT_EQ(::kill(recognizer.workerProcessId(), SIGKILL), 0);
    const Image other = fixturePicture("traditional-dark");
    EXPECT_FALSE(recognizer.recognize(other, Point{120, 55}, 3));
    ASSERT_TRUE(recognizer.waitUntilReady(milliseconds(60000)));
    EXPECT_EQ(bestText(recognizer.recognize(image, point, 3)), before);
    EXPECT_FALSE(bestText(recognizer.recognize(other, Point{120, 55}, 3)).empty());
}

}  // namespace
}  // namespace velmora
