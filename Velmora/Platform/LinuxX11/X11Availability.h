// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace velmora {

/// Whether an X server answers; the display's name is empty for that of the environment. Any
/// thread, also before the application object is made.
bool isX11ServerReachable(const std::string& display = {});

}  // namespace velmora
