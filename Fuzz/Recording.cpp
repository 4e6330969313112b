// SPDX-License-Identifier: MIT
#include <cstdint>
#include <cstdlib>

#include "Velmora/Platform/Recorded/RecordingText.h"

/// Any text is a recording or none; a recording that is written again reads back the same.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto recording = velmora::parseRecording({reinterpret_cast<const char*>(data), size});
    if (recording) {
        const std::string text = velmora::recordingText(*recording);
        const auto again = velmora::parseRecording(text);
        if (!again || velmora::recordingText(*again) != text) {
            std::abort();
        }
    }
    return 0;
}
