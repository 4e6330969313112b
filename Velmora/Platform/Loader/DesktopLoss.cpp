// SPDX-License-Identifier: MIT
#include "Velmora/Platform/Loader/DesktopLoss.h"

#include "Velmora/Platform/LinuxX11/X11ServerLoss.h"

namespace velmora {

DesktopLoss::DesktopLoss(const PlatformChoice& choice) {
    if (choice.kind == PlatformChoice::Kind::x11) {
        x11_ = std::make_unique<X11ServerLoss>();
    }
}

DesktopLoss::~DesktopLoss() = default;

}  // namespace velmora
