// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>

#include "Velmora/Platform/Loader/PlatformBackends.h"

namespace velmora {

/// The desktop that a recording saw. Of the unavailable kind where the folder holds none.
PlatformBackends loadRecordedPlatform(const std::filesystem::path& folder);

}  // namespace velmora
