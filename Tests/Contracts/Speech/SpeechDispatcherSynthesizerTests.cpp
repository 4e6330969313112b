// SPDX-License-Identifier: MIT
#include "Velmora/Platform/Linux/Speech/SpeechDispatcherSynthesizer.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <thread>

#include "Tests/Contracts/Speech/PrivateSpeechDaemon.h"
#include "Velmora/Coordination/SpeechService.h"

namespace velmora::test {
namespace {

bool eventually(const std::function<bool()>& condition) {
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(20);
    while (!condition()) {
        if (std::chrono::steady_clock::now() > deadline) {
            return false;
        }
        std::this_thread::yield();
    }
    return true;
}

TEST(SpeechDispatcherSynthesizer, SaysHanziWithThePinyinAwareVoiceOfTheFormantSynthesizer) {
    const PrivateSpeechDaemon daemon("espeak-ng");
    SpeechDispatcherSynthesizer synthesizer;
    SpeechService service(synthesizer);
    service.speak("学习");
    const auto spoken = daemon.nextSpoken();
    ASSERT_TRUE(spoken);
    EXPECT_EQ(spoken->text, "学习");
    EXPECT_EQ(spoken->voice, "pinyin-aware");
    EXPECT_EQ(spoken->rate, "-18");
    EXPECT_TRUE(synthesizer.isSpeaking());
}

TEST(SpeechDispatcherSynthesizer, AsksOtherSynthesizersForMandarin) {
    const PrivateSpeechDaemon daemon("recorder");
    SpeechDispatcherSynthesizer synthesizer;
    synthesizer.speak("中文", "zh-CN", 1.0);
    const auto spoken = daemon.nextSpoken();
    ASSERT_TRUE(spoken);
    EXPECT_EQ(spoken->voice, "mandarin");
    EXPECT_EQ(spoken->rate, "0");
}

TEST(SpeechDispatcherSynthesizer, CutsOffTheFirstUtteranceForTheSecond) {
    const PrivateSpeechDaemon daemon("recorder");
    SpeechDispatcherSynthesizer synthesizer;
    SpeechService service(synthesizer);
    service.speak("第一");
    ASSERT_TRUE(daemon.nextSpoken());
    // The module goes on with the first one until it is cut off, so the second one arrives only
    // because it was.
    service.speak("第二");
    const auto second = daemon.nextSpoken();
    ASSERT_TRUE(second);
    EXPECT_EQ(second->text, "第二");
    EXPECT_TRUE(synthesizer.isSpeaking());
}

TEST(SpeechDispatcherSynthesizer, SaysOnlyTheNewestOfManyRequests) {
    const PrivateSpeechDaemon daemon("recorder");
    SpeechDispatcherSynthesizer synthesizer;
    SpeechService service(synthesizer);
    for (int number = 0; number < 50; ++number) {
        service.speak("旧的");
    }
    service.speak("最新");
    for (auto spoken = daemon.nextSpoken(); spoken; spoken = daemon.nextSpoken()) {
        if (spoken->text == "最新") {
            SUCCEED();
            return;
        }
        EXPECT_EQ(spoken->text, "旧的");
    }
    FAIL() << "the newest request was never said";
}

TEST(SpeechDispatcherSynthesizer, FallsSilentWhenStopped) {
    const PrivateSpeechDaemon daemon("recorder");
    SpeechDispatcherSynthesizer synthesizer;
    synthesizer.speak("停", "zh-CN", 0.9);
    ASSERT_TRUE(daemon.nextSpoken());
    synthesizer.stopImmediately();
    EXPECT_FALSE(synthesizer.isSpeaking());
}

TEST(SpeechDispatcherSynthesizer, SpeaksAgainAfterTheDaemonWasKilledInMidWord) {
    PrivateSpeechDaemon daemon("recorder");
    SpeechDispatcherSynthesizer synthesizer;
    SpeechService service(synthesizer);
    service.speak("之前");
    ASSERT_TRUE(daemon.nextSpoken());
    daemon.restart();
    service.speak("之后");
    const auto spoken = daemon.nextSpoken();
    ASSERT_TRUE(spoken);
    EXPECT_EQ(spoken->text, "之后");
}

TEST(SpeechDispatcherSynthesizer, FallsSilentWhereThereIsNoDaemon) {
    ::setenv("SPEECHD_ADDRESS", "unix_socket:/nonexistent/velmora/socket", 1);
    SpeechDispatcherSynthesizer synthesizer;
    SpeechService service(synthesizer);
    service.speak("没有");
    EXPECT_TRUE(eventually([&] { return !synthesizer.isSpeaking(); }));
    ::unsetenv("SPEECHD_ADDRESS");
}

TEST(SpeechDispatcherSynthesizer, SaysNothingForAnEmptyText) {
    const PrivateSpeechDaemon daemon("recorder");
    SpeechDispatcherSynthesizer synthesizer;
    SpeechService service(synthesizer);
    service.speak("");
    EXPECT_TRUE(eventually([&] { return !synthesizer.isSpeaking(); }));
    service.speak("有声");
    const auto spoken = daemon.nextSpoken();
    ASSERT_TRUE(spoken);
    EXPECT_EQ(spoken->text, "有声");
}

TEST(SpeechDispatcherSynthesizer, MapsSharesOfTheNormalRateToTheDaemonsScale) {
    EXPECT_EQ(SpeechDispatcherSynthesizer::daemonRate(1.0), 0);
    EXPECT_EQ(SpeechDispatcherSynthesizer::daemonRate(0.9), -18);
    EXPECT_EQ(SpeechDispatcherSynthesizer::daemonRate(0.0), -100);
    EXPECT_EQ(SpeechDispatcherSynthesizer::daemonRate(100.0), 100);
}

}  // namespace
}  // namespace velmora::test
