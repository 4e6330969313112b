// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>

#include "Velmora/Platform/Loader/PlatformBackends.h"
#include "Velmora/Platform/Loader/PlatformChoice.h"

namespace velmora {

/// To be called before the application object is made: tells the toolkit which display to use.
/// Answers why the program cannot start here, in one line; nothing where it can.
std::optional<std::string> preparePlatform(const PlatformChoice& choice);

/// To be called on the main thread once the application object is there.
PlatformBackends loadPlatform(const PlatformChoice& choice);

/// Recognition alone; everything else is of the unavailable kind. Needs no display.
PlatformBackends loadRecognition();

}  // namespace velmora
