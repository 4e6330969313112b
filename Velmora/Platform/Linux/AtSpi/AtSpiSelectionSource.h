// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>

namespace velmora {

/// What the window system holds as the text that was selected last, in UTF-8, where a window of
/// this process holds it; nothing otherwise and after the time given. Called on the worker thread.
using AtSpiSelectionSource = std::function<std::optional<std::string>(
    std::int64_t processId, std::chrono::milliseconds patience)>;

}  // namespace velmora
