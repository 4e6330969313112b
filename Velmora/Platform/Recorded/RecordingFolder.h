// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>
#include <memory>
#include <optional>
#include <string>

#include "Velmora/Platform/Recorded/Recording.h"

namespace velmora {

/// Recordings on disk: a folder with the file recording.json and the captured pictures as PNG.
class RecordingFolder {
  public:
    /// A recording, or why there is none, in one line.
    struct Loaded {
        std::shared_ptr<const Recording> recording;
        std::string error;
    };

    static Loaded load(const std::filesystem::path& folder);

    /// Makes the folder where it is missing; readable by the user alone, because what was on the
    /// screen is nobody else's business. Answers why it failed, in one line.
    static std::optional<std::string> save(const Recording& recording,
                                           const std::filesystem::path& folder);
};

}  // namespace velmora
