// SPDX-License-Identifier: MIT
#include "Velmora/Platform/Linux/Tesseract/Worker/ScriptReaders.h"

#include <gtest/gtest.h>

#include <future>

#include "Velmora/Platform/Linux/Tesseract/RecognizerProcess.h"

namespace velmora {
namespace {

/// A line with a few strokes, which some symbols are seen in.
ReadLineRequest someLine(ScriptModel model, int shift = 0) {
    GrayImage line(220, 48, 255);
    for (int x = 30; x < 190; ++x) {
        for (const int y : {12, 24, 36}) {
            const bool isGap = (x + shift) % 40 < 6;
            line.at(x, y) = isGap ? 255 : 0;
            line.at(x, y + 1) = isGap ? 255 : 0;
        }
    }
    return {model, std::move(line)};
}

class ReadersOfScripts : public ::testing::Test {
  protected:
    void SetUp() override {
        for (ScriptReaders* readers : {&plain_, &ahead_}) {
            for (const ScriptModel model : {ScriptModel::simplified, ScriptModel::traditional}) {
                ASSERT_EQ(readers->load(RecognizerProcess::defaultDataFolder(), model),
                          ModelState::ready);
            }
        }
    }

    Companion nobody_{false};
    Companion companion_{true};
    ScriptReaders plain_{nobody_};
    ScriptReaders ahead_{companion_};
};

TEST_F(ReadersOfScripts, WhatWasReadAheadIsTheSame) {
    for (const ScriptModel model : {ScriptModel::simplified, ScriptModel::traditional}) {
        const ReadLineRequest line = someLine(model);
        ahead_.begin(line);
        const auto reading = ahead_.read(line);
        ASSERT_TRUE(reading);
        EXPECT_EQ(reading, plain_.read(line));
        EXPECT_EQ(ahead_.read(line), reading) << "a second time";
    }
}

TEST_F(ReadersOfScripts, OtherLinesAreReadMeanwhile) {
    const ReadLineRequest first = someLine(ScriptModel::simplified);
    const ReadLineRequest second = someLine(ScriptModel::traditional, 3);
    const ReadLineRequest third = someLine(ScriptModel::simplified, 7);
    ahead_.begin(first);
    EXPECT_EQ(ahead_.read(second), plain_.read(second));
    EXPECT_EQ(ahead_.read(third), plain_.read(third)) << "by the engine that may be at work";
    EXPECT_EQ(ahead_.read(first), plain_.read(first));
}

TEST_F(ReadersOfScripts, OfManyLinesTheLastAreKept) {
    for (int shift = 0; shift < 6; ++shift) {
        ahead_.begin(someLine(ScriptModel::simplified, shift));
    }
    for (int shift = 0; shift < 6; ++shift) {
        const ReadLineRequest line = someLine(ScriptModel::simplified, shift);
        EXPECT_EQ(ahead_.read(line), plain_.read(line)) << shift;
    }
    EXPECT_TRUE(companion_.awaitRest(std::chrono::seconds(60)));
}

TEST_F(ReadersOfScripts, ALineThatHasNotBegunIsReadAtOnce) {
    std::promise<void> release;
    companion_.begin([released = release.get_future().share()] { released.wait(); });
    const ReadLineRequest line = someLine(ScriptModel::simplified);
    ahead_.begin(line);
    EXPECT_EQ(ahead_.read(line), plain_.read(line));
    release.set_value();
    EXPECT_TRUE(companion_.awaitRest(std::chrono::seconds(60)));
}

TEST(ScriptReaders, HaveNothingToSayWithoutData) {
    Companion companion(true);
    ScriptReaders readers(companion);
    const ReadLineRequest line = someLine(ScriptModel::simplified);
    readers.begin(line);
    EXPECT_FALSE(readers.read(line));
    EXPECT_FALSE(readers.read(someLine(ScriptModel::traditional)));
    EXPECT_EQ(readers.load("/nonexistent", ScriptModel::simplified), ModelState::missing);
}

}  // namespace
}  // namespace velmora
