// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "Velmora/Platform/Geometry.h"
#include "Velmora/Platform/LinuxX11/X11Connection.h"

namespace velmora {

/// One monitor as the server counts them.
struct X11Monitor {
    std::uint64_t id = 0;  ///< The same while a monitor of this name is there.
    std::string name;
    Rect native;
};

/// The active monitors; empty where the server cannot tell.
std::vector<X11Monitor> x11Monitors(X11Connection& connection);

}  // namespace velmora
