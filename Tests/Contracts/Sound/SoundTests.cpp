// SPDX-License-Identifier: MIT
// What is heard when words are spoken, through a real synthesiser and a sound server.
#include <gtest/gtest.h>

#include <string>

#include "Tests/Contracts/Sound/Likeness.h"
#include "Tests/Contracts/Sound/SoundingSpeechDaemon.h"
#include "Velmora/Coordination/SpeechService.h"
#include "Velmora/Platform/Linux/Speech/SpeechDispatcherSynthesizer.h"

namespace velmora::test {
namespace {

using Samples = SoundingSpeechDaemon::Samples;

constexpr const char* pinyinVoice = "cmn-latn-pinyin";
constexpr int slowWords = 158;  // A minute; nine tenths of the synthesiser's normal.
constexpr int normalWords = 175;
constexpr const char* sentence = "今天天气很好我们一起去公园散步然后回家吃饭";

double seconds(const Samples& sound) {
    return static_cast<double>(sound.size()) / SoundingSpeechDaemon::rate;
}

double apart(const Samples& one, const Samples& other) {
    return difference(one, other, SoundingSpeechDaemon::rate);
}

class SoundTest : public ::testing::Test {
  protected:
    Samples render(const char* text, const char* voice = pinyinVoice, int words = slowWords) {
        return daemon.rendered(text, voice, words);
    }
    /// Whether this sound is this word rather than any of the others.
    ::testing::AssertionResult isWord(const Samples& sound, const char* word) {
        const double own = apart(sound, render(word));
        for (const char* const other : {"学习中文", "图书馆里", "朋友喝茶", "明天下雨"}) {
            const double others = apart(sound, render(other));
            if (std::string(other) != word && own > 0.7 * others) {
                return ::testing::AssertionFailure()
                       << word << " differs by " << own << ", " << other << " by " << others;
            }
        }
        return ::testing::AssertionSuccess();
    }
    /// The end of a sound, as long as this word.
    Samples endLike(const Samples& sound, const char* word) {
        const auto length =
            static_cast<std::ptrdiff_t>(std::min(sound.size(), render(word).size()));
        return {sound.end() - length, sound.end()};
    }

    SoundingSpeechDaemon daemon;
    SpeechDispatcherSynthesizer synthesizer;
    SpeechService service{synthesizer};
};

TEST_F(SoundTest, WhatIsHeardIsTheWordInTheVoiceThatReadsHanziALittleSlower) {
    const std::size_t before = daemon.heard().size();
    service.speak("学习中文");
    const Samples sound = daemon.nextSound(before);
    ASSERT_FALSE(sound.empty()) << daemon.account();
    EXPECT_TRUE(isWord(sound, "学习中文"));
    const double own = apart(sound, render("学习中文"));
    EXPECT_LT(own, 0.7 * apart(sound, render("学习中文", "cmn"))) << "another voice";
    EXPECT_LT(own, 0.7 * apart(sound, render("学习中文", "en"))) << "another voice";
    const double slower = seconds(sound) / seconds(render("学习中文", pinyinVoice, normalWords));
    EXPECT_GT(slower, 1.05);
    EXPECT_LT(slower, 1.35);
}

TEST_F(SoundTest, TheFirstUtteranceIsCutOffAndTheSecondIsHeardWhole) {
    const std::size_t before = daemon.heard().size();
    service.speak(sentence);
    ASSERT_TRUE(daemon.isHeard(before)) << daemon.account();
    service.speak("图书馆里");
    const Samples sound = daemon.nextSound(before);
    EXPECT_LT(seconds(sound), seconds(render(sentence))) << "the sentence was not cut off";
    EXPECT_TRUE(isWord(endLike(sound, "图书馆里"), "图书馆里"));
}

TEST_F(SoundTest, ADaemonThatIsKilledInMidWordSpeaksTheNextWordOnceItIsBack) {
    const std::size_t before = daemon.heard().size();
    service.speak(sentence);
    ASSERT_TRUE(daemon.isHeard(before)) << daemon.account();
    daemon.kill();
    daemon.start();
    const std::size_t later = daemon.heard().size();
    service.speak("学习中文");
    const Samples sound = daemon.nextSound(later);
    ASSERT_FALSE(sound.empty()) << daemon.account();
    EXPECT_TRUE(isWord(endLike(sound, "学习中文"), "学习中文"));
}

}  // namespace
}  // namespace velmora::test
