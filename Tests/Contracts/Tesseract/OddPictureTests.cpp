// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <chrono>
#include <memory>
#include <string>
#include <vector>

#include "Tests/Contracts/Tesseract/Pictures.h"
#include "Tests/Contracts/Tesseract/SharedRecognizer.h"
#include "Tests/Support/TemporaryFolder.h"
#include "Velmora/Platform/Linux/Tesseract/TesseractRecognizer.h"
#include "Velmora/Platform/Recognition/CodePoint.h"
#include "Velmora/Platform/Recognition/WordPatterns.h"
#include "VelmoraCore/CharacterText.h"

// Writing that lines of Chinese are not: what is Chinese in it is read, and the rest does no harm.
namespace velmora {
namespace {

using std::chrono::milliseconds;
using testing::sharedRecognizer;

/// The first reading's character whose box holds the point; empty where there is none.
std::string characterAt(const Image& image, Point point) {
    const auto observations = sharedRecognizer().recognize(image, point, 3);
    EXPECT_TRUE(observations) << "recognition itself failed";
    const Point normalized{point.x / image.width(), 1 - point.y / image.height()};
    for (const TextObservation& observation :
         observations.value_or(std::vector<TextObservation>())) {
        const RecognizedText& reading = *observation.candidates.front();
        const CharacterText text(reading.string());
        for (std::size_t i = 0; i < text.count(); ++i) {
            const auto box = reading.boundingBox(i, i + 1);
            if (box && box->contains(normalized)) {
                return std::string(text[i]);
            }
        }
    }
    return {};
}

struct OddPlace {
    const char* picture;
    Point point;
    const char* character;
};

class OddPictures : public ::testing::TestWithParam<OddPlace> {};

TEST_P(OddPictures, HaveTheirChineseRead) {
    const OddPlace& place = GetParam();
    const Image image = fixturePicture(place.picture);
    ASSERT_FALSE(image.isEmpty());
    EXPECT_EQ(characterAt(image, place.point), place.character);
}

INSTANTIATE_TEST_SUITE_P(
    BesideOtherScripts, OddPictures,
    ::testing::Values(OddPlace{"japanese", {332, 46}, "我"}, OddPlace{"japanese", {376, 46}, "喜"},
                      OddPlace{"korean", {211, 46}, "我"}, OddPlace{"korean", {321, 46}, "乐"},
                      OddPlace{"emoji", {41, 46}, "我"}, OddPlace{"emoji", {183, 46}, "音"},
                      OddPlace{"emoji", {276, 46}, "习"}));

INSTANTIATE_TEST_SUITE_P(FromTopToBottom, OddPictures,
                         ::testing::Values(OddPlace{"vertical", {41, 46}, "我"},
                                           OddPlace{"vertical", {41, 80}, "们"},
                                           OddPlace{"vertical", {41, 146}, "天"},
                                           OddPlace{"vertical", {41, 244}, "习"}));

/// With the forms of characters at hand, drawn into a folder of its own.
TesseractRecognizer& recognizerWithForms() {
    static const testing::TemporaryFolder folder;
    static const auto shared = [] {
        auto words = std::make_shared<WordPatterns>();
        for (const char* word : {"我们", "我們", "喜欢", "喜歡", "音乐", "音樂", "今日", "書館",
                                 "勉強", "大家", "未来", "固体", "因体", "寝室", "人旦", "卫生",
                                 "呈现", "正串", "起道", "检学", "下凡", "十人"}) {
            words->add(word);
        }
        words->finish();
        TesseractRecognizer::Options options{{}, {}, milliseconds(20000)};
        options.glyphFolder = folder.path().string();
        auto made = std::make_unique<TesseractRecognizer>(options);
        made->setWords(words);
        made->start();
        made->waitUntilReady(milliseconds(60000));
        made->waitForGlyphs(milliseconds(60000));
        return made;
    }();
    return *shared;
}

/// Below this a reading counts for nothing.
constexpr float silence = 0.3F;

class ForeignScript : public ::testing::TestWithParam<OddPlace> {};

TEST_P(ForeignScript, IsNotTakenForChinese) {
    const OddPlace& place = GetParam();
    const Image image = fixturePicture(place.picture);
    ASSERT_FALSE(image.isEmpty());
    const auto observations = recognizerWithForms().recognize(image, place.point, 3);
    ASSERT_TRUE(observations);
    const Point normalized{place.point.x / image.width(), 1 - place.point.y / image.height()};
    for (const TextObservation& observation : *observations) {
        for (const auto& reading : observation.candidates) {
            const CharacterText text(reading->string());
            for (std::size_t i = 0; i < text.count() && reading->confidence() >= silence; ++i) {
                const auto box = reading->boundingBox(i, i + 1);
                if (box && box->contains(normalized)) {
                    EXPECT_FALSE(isHan(firstCodePoint(text[i])) && text[i] != place.character)
                        << text[i] << " with " << reading->confidence();
                }
            }
        }
    }
}

INSTANTIATE_TEST_SUITE_P(
    BesideChinese, ForeignScript,
    ::testing::Values(OddPlace{"japanese", {107, 46}, "図"}, OddPlace{"japanese", {85, 46}, ""},
                      OddPlace{"japanese", {173, 46}, ""}, OddPlace{"japanese", {262, 46}, ""},
                      OddPlace{"japanese", {305, 46}, ""}, OddPlace{"korean", {40, 46}, ""},
                      OddPlace{"korean", {105, 46}, ""}, OddPlace{"korean", {145, 46}, ""},
                      OddPlace{"rotated", {160, 165}, ""}));

TEST(ForeignScriptBesideChinese, LeavesTheChineseSure) {
    for (const OddPlace& place :
         {OddPlace{"japanese", {332, 46}, "我"}, OddPlace{"korean", {211, 46}, "我"},
          OddPlace{"korean", {255, 46}, "喜"}, OddPlace{"vertical", {41, 146}, "天"}}) {
        const Image image = fixturePicture(place.picture);
        const auto observations = recognizerWithForms().recognize(image, place.point, 3);
        ASSERT_TRUE(observations && !observations->empty());
        EXPECT_NE(observations->front().candidates.front()->string().find(place.character),
                  std::string::npos);
        EXPECT_GE(observations->front().candidates.front()->confidence(), 0.99F)
            << place.picture << place.point.x;
    }
}

TEST(OddPicture, OfAnyKindCanBeAskedAboutEverywhere) {
    for (const char* name : {"japanese", "korean", "emoji", "vertical", "rotated"}) {
        const Image image = fixturePicture(name);
        ASSERT_FALSE(image.isEmpty());
        for (double y = 10; y < image.height(); y += 36) {
            for (double x = 10; x < image.width(); x += 36) {
                EXPECT_TRUE(sharedRecognizer().recognize(image, Point{x, y}, 3)) << name << x << y;
            }
        }
        EXPECT_TRUE(sharedRecognizer().recognize(image, std::nullopt, 3));
    }
}

}  // namespace
}  // namespace velmora
