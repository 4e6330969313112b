// SPDX-License-Identifier: MIT
#include "Velmora/Coordination/SpeechService.h"

namespace velmora {

void SpeechService::speak(const std::string& text) {
    if (synthesizer_.isSpeaking()) {
        synthesizer_.stopImmediately();
    }
    synthesizer_.speak(text, "zh-CN", rate);
}

}  // namespace velmora
