// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace velmora {

/// One thing to say.
struct SpeechUtterance {
    unsigned long long number = 0;  ///< Ours, never 0; told back when it has ended.
    std::string text;
    std::string language;
    int rate = 0;  ///< On the daemon's scale, −100…100.
};

}  // namespace velmora
