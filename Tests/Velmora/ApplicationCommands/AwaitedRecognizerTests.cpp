// SPDX-License-Identifier: MIT
#include "Velmora/CommandLine/Application/AwaitedRecognizer.h"

#include <gtest/gtest.h>

#include "Tests/Support/TextCapture/FakeRecognizer.h"

namespace velmora {
namespace {

TEST(AwaitedRecognizer, IsMadeReadyOnceBeforeItIsFirstNeeded) {
    const auto real = std::make_shared<FakeRecognizer>();
    int madeReady = 0;
    AwaitedRecognizer recognizer(real, [&] {
        EXPECT_TRUE(real->sizes.empty());
        ++madeReady;
    });
    real->currentStatus.stage = RecognitionStatus::Stage::loading;
    EXPECT_EQ(recognizer.status().stage, RecognitionStatus::Stage::loading);
    EXPECT_EQ(madeReady, 0) << "to ask how far it is waits for nothing";
    const Image picture(2, 1, {1, 2});
    recognizer.recognize(picture, Point{1, 0}, 2);
    recognizer.recognize(picture, std::nullopt, 3);
    recognizer.verify(picture, {}, {1, 0}, 3);
    EXPECT_EQ(madeReady, 1);
    EXPECT_EQ(real->points, (std::vector<std::optional<Point>>{Point{1, 0}, std::nullopt}));
    EXPECT_EQ(real->limits, (std::vector<int>{2, 3}));
    EXPECT_EQ(real->verifiedPoints, (std::vector<Point>{{1, 0}}));
}

TEST(AwaitedRecognizer, IsMadeReadyForAVerificationToo) {
    const auto real = std::make_shared<FakeRecognizer>();
    int madeReady = 0;
    AwaitedRecognizer recognizer(real, [&] { ++madeReady; });
    recognizer.verify(Image(2, 1, {1, 2}), {}, {1, 0}, 3);
    EXPECT_EQ(madeReady, 1);
}

}  // namespace
}  // namespace velmora
