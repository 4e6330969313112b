// SPDX-License-Identifier: MIT
#pragma once

#include <nlohmann/json.hpp>

#include "Velmora/Platform/Recorded/Recording.h"

namespace velmora {

/// The JSON form of a recording, as Documentation/Recordings.md describes it.
nlohmann::ordered_json encodeRecording(const Recording& recording);

/// The recording of a JSON value; throws `DecodingError` or an exception of the JSON library where
/// it is none.
Recording decodeRecording(const nlohmann::json& json);

}  // namespace velmora
