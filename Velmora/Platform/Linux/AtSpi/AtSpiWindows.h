// SPDX-License-Identifier: MIT
#pragma once

#include <optional>

#include "Velmora/Platform/Linux/AtSpi/AtSpiApplications.h"
#include "Velmora/Platform/Linux/AtSpi/AtSpiSpace.h"
#include "Velmora/Platform/WindowLocator.h"

namespace velmora {

/// A program's own object for one of its windows.
struct AtSpiWindow {
    AtSpiObject object;
    AtSpiSpace space;
};

/// Finds the object of a window by its place, size and title. Nothing where none fits: menus and
/// tooltips of some toolkits are windows that their programs do not list, and what lies below
/// them must not be read in their place.
std::optional<AtSpiWindow> findAtSpiWindow(AtSpiBus& bus, const AtSpiApplication& application,
                                           const WindowInfo& window, const ScreenGeometry& geometry,
                                           AtSpiDeadline& deadline);

}  // namespace velmora
