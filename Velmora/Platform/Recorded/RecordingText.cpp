// SPDX-License-Identifier: MIT
#include "Velmora/Platform/Recorded/RecordingText.h"

#include "Velmora/Platform/Recorded/RecordingCoding.h"
#include "VelmoraCore/BoundedJson.h"
#include "VelmoraCore/DecodingError.h"

namespace velmora {

std::string capturePictureName(std::size_t index) {
    return "capture-" + std::to_string(index) + ".png";
}

std::string recordingText(const Recording& recording) {
    return encodeRecording(recording).dump(1, ' ', false,
                                           nlohmann::ordered_json::error_handler_t::replace) +
           "\n";
}

std::optional<Recording> parseRecording(std::string_view text) {
    try {
        return decodeRecording(parseBoundedJson(text, {Recording::mostBytes, 16}));
    } catch (const DecodingError&) {
        return std::nullopt;
    } catch (const nlohmann::json::exception&) {
        return std::nullopt;
    }
}

}  // namespace velmora
