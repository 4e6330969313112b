// SPDX-License-Identifier: MIT
#pragma once

#include "Velmora/Platform/SpeechSynthesizer.h"
#include "Velmora/Platform/Unavailable/Unavailability.h"

namespace velmora {

/// No voice.
class UnavailableSpeechSynthesizer final : public SpeechSynthesizer, public Unavailability {
  public:
    using Unavailability::Unavailability;

    bool isSpeaking() const override { return false; }
    void stopImmediately() override {}
    void speak(const std::string& /*text*/, const std::string& /*language*/,
               double /*rate*/) override {}
};

}  // namespace velmora
