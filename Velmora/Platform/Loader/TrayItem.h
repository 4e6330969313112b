// SPDX-License-Identifier: MIT
#pragma once

#include <memory>

#include "Velmora/Platform/Clock.h"
#include "Velmora/Platform/DesktopAppearance.h"
#include "Velmora/Platform/Loader/PlatformChoice.h"
#include "Velmora/Platform/StatusItem.h"

namespace velmora {

/// The tray item for this desktop: on the session bus, and on X desktops embedded in the panel's
/// tray for as long as nothing on the bus shows tray items. Both services outlive it. Main thread.
std::unique_ptr<StatusItem> loadStatusItem(const PlatformChoice& choice, Clock& clock,
                                           const DesktopAppearance& appearance);

}  // namespace velmora
