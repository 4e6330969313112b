// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace velmora {

/// Says texts aloud in Mandarin. Main thread; never waits for the sound.
class SpeechSynthesizer {
  public:
    virtual ~SpeechSynthesizer() = default;

    virtual bool isSpeaking() const = 0;

    /// Cuts off what is being said, in the middle of a word.
    virtual void stopImmediately() = 0;

    /// Says a text; `rate` is a share of the normal rate (1.0).
    virtual void speak(const std::string& text, const std::string& language, double rate) = 0;
};

}  // namespace velmora
