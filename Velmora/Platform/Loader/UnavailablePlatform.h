// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include "Velmora/Platform/Loader/PlatformBackends.h"

namespace velmora {

/// A desktop without anything, for this reason.
PlatformBackends loadUnavailablePlatform(const std::string& reason);

}  // namespace velmora
