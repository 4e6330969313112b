// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "Velmora/Platform/Recorded/Recording.h"

namespace velmora {

/// The name of the picture file of a recording's capture.
std::string capturePictureName(std::size_t index);

/// A recording as JSON, without its pictures: a capture that has one names its file. Numbers that
/// are not finite make their answer none.
std::string recordingText(const Recording& recording);

/// The recording that a JSON text describes; nothing where it is none, is too long, or refers to
/// what is not there. Its captures have pictures of one pixel where the text names a file, to be
/// replaced by the real ones.
std::optional<Recording> parseRecording(std::string_view text);

}  // namespace velmora
