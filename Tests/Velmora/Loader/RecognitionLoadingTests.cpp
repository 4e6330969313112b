// SPDX-License-Identifier: MIT
// How recognition is loaded behind the program's start, with the worker and the languages of this
// system.
#include <gtest/gtest.h>

#include <chrono>
#include <memory>
#include <vector>

#include "Velmora/Platform/Loader/PlatformLoader.h"
#include "VelmoraCore/DictionaryStore.h"

namespace velmora {
namespace {

using std::chrono::milliseconds;
using Stage = RecognitionStatus::Stage;

constexpr milliseconds longEnough{60000};

std::shared_ptr<const DictionaryStore> someDictionary() {
    DictionaryEntry entry;
    entry.simplified = "中文";
    entry.traditional = "中文";
    return std::make_shared<DictionaryStore>(std::vector<DictionaryEntry>{entry});
}

Image blank() {
    return {100, 50, std::vector<std::uint32_t>(5000, 0xFFFFFFFF)};
}

TEST(RecognitionLoading, BeginsWhenItIsAskedTo) {
    const PlatformBackends backends = loadRecognition();
    EXPECT_EQ(backends.textRecognizer->status().stage, Stage::notStarted);
    EXPECT_FALSE(backends.textRecognizer->recognize(blank(), Point{50, 25}, 3));
    EXPECT_FALSE(backends.waitForRecognition(milliseconds(0))) << "nothing is on its way";

    backends.startRecognition(nullptr);
    EXPECT_TRUE(backends.waitForRecognition(longEnough));
    EXPECT_EQ(backends.textRecognizer->status().stage, Stage::ready);
    EXPECT_TRUE(backends.textRecognizer->recognize(blank(), Point{50, 25}, 3));
    backends.startRecognition(someDictionary());
    EXPECT_TRUE(backends.waitForRecognition(longEnough)) << "a second start changes nothing";
}

TEST(RecognitionLoading, EndsWithTheProgramWhereverItIs) {
    for (int time = 0; time < 3; ++time) {
        const PlatformBackends backends = loadRecognition();
        backends.startRecognition(someDictionary());
        // Somewhere between its start and what is drawn when it is ready.
        if (time > 0) {
            backends.waitForRecognition(milliseconds(time - 1));
        }
    }
}

TEST(RecognitionLoading, FindsWhereTextStandsWithoutBeingLoaded) {
    const PlatformBackends backends = loadRecognition();
    const auto texts = backends.textRectangleDetector->detect(blank());
    ASSERT_TRUE(texts);
    EXPECT_TRUE(texts->empty());
}

}  // namespace
}  // namespace velmora
