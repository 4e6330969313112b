// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <string>

#include "Velmora/Platform/SpeechSynthesizer.h"

namespace velmora {

/// Speaks through the desktop's speech daemon. The daemon is asked on a thread of our own, which is
/// started by the first request and keeps one connection; only the newest request is ever waiting,
/// so a daemon that hangs, dies or has no sound to play delays nothing and fills no memory.
class SpeechDispatcherSynthesizer final : public SpeechSynthesizer {
  public:
    SpeechDispatcherSynthesizer();

    /// Cuts off what is being said. Leaves a daemon that does not answer behind instead of waiting.
    ~SpeechDispatcherSynthesizer() override;

    /// True from a request until the daemon says that it ended, was cut off or failed.
    bool isSpeaking() const override;
    void stopImmediately() override;
    void speak(const std::string& text, const std::string& language, double rate) override;

    /// The daemon's rate (−100…100, 0 normal) for a share of the normal rate. The daemon's default
    /// module speaks 175 words a minute at 0, 80 at −100 and 450 at 100, linear on either side.
    static int daemonRate(double rate);

    /// The language tag to ask of an output module for Mandarin. The formant synthesizer that the
    /// daemon comes with reads Chinese characters as letters under its plain Chinese voices and
    /// right under the one that also knows pinyin.
    static std::string languageTag(const std::string& outputModule, const std::string& language);

  private:
    struct Worker;
    std::shared_ptr<Worker> worker_;
};

}  // namespace velmora
