// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <chrono>
#include <memory>
#include <string>
#include <vector>

#include "Tests/Contracts/Tesseract/Pictures.h"
#include "Velmora/Platform/Linux/Tesseract/TesseractRecognizer.h"
#include "VelmoraCore/CharacterText.h"

// Writing that lines of Chinese are not: what is Chinese in it is read, and the rest does no harm.
namespace velmora {
namespace {

using std::chrono::milliseconds;

TesseractRecognizer& recognizer() {
    static const auto shared = [] {
        auto made = std::make_unique<TesseractRecognizer>(
            TesseractRecognizer::Options{{}, {}, milliseconds(20000)});
        made->start();
        made->waitUntilReady(milliseconds(60000));
        return made;
    }();
    return *shared;
}

/// The first reading's character whose box holds the point; empty where there is none.
std::string characterAt(const Image& image, Point point) {
    const auto observations = recognizer().recognize(image, point, 3);
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

TEST(OddPicture, OfAnyKindCanBeAskedAboutEverywhere) {
    for (const char* name : {"japanese", "korean", "emoji", "vertical", "rotated"}) {
        const Image image = fixturePicture(name);
        ASSERT_FALSE(image.isEmpty());
        for (double y = 10; y < image.height(); y += 36) {
            for (double x = 10; x < image.width(); x += 36) {
                EXPECT_TRUE(recognizer().recognize(image, Point{x, y}, 3)) << name << x << y;
            }
        }
        EXPECT_TRUE(recognizer().recognize(image, std::nullopt, 3));
    }
}

}  // namespace
}  // namespace velmora
