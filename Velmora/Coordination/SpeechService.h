// SPDX-License-Identifier: MIT
#pragma once

#include "Velmora/Coordination/Speaking.h"
#include "Velmora/Platform/SpeechSynthesizer.h"

namespace velmora {

/// Pronounces Chinese in Mandarin, slightly slower than normal, for learners. Main thread.
class SpeechService final : public Speaking {
  public:
    /// A share of the voice's normal rate.
    static constexpr double rate = 0.9;

    /// Keeps one synthesizer, so that a new utterance interrupts the one before. It outlives us.
    explicit SpeechService(SpeechSynthesizer& synthesizer) : synthesizer_(synthesizer) {}

    /// Cuts off what is being said, in mid-word, and says this instead; requests never queue.
    void speak(const std::string& text) override;

  private:
    SpeechSynthesizer& synthesizer_;
};

}  // namespace velmora
