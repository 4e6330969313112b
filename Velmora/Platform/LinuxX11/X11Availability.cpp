// SPDX-License-Identifier: MIT
#include "Velmora/Platform/LinuxX11/X11Availability.h"

#include "Velmora/Platform/LinuxX11/X11Connection.h"

namespace velmora {

bool isX11ServerReachable(const std::string& display) {
    return X11Connection(display).isOpen();
}

}  // namespace velmora
