// SPDX-License-Identifier: MIT
#pragma once

#include <optional>

#include "Velmora/Platform/Linux/AtSpi/AtSpiDeadline.h"
#include "Velmora/Platform/Linux/AtSpi/AtSpiElementState.h"
#include "Velmora/Platform/Linux/AtSpi/AtSpiService.h"
#include "Velmora/Platform/ScreenGeometry.h"
#include "Velmora/Platform/WindowLocator.h"

namespace velmora {

/// The element of the program behind a window at a point of capture space, with which a new
/// extraction begins. Nothing where the program does not tell, is being left alone, or does not
/// give every answer in time. On the worker thread.
std::optional<AtSpiElementState> findAtSpiElementAt(AtSpiService::Core& core,
                                                    const WindowInfo& window, Point capture,
                                                    const ScreenGeometry& geometry,
                                                    AtSpiDeadline& deadline);

/// The same for the element in this window that has the keyboard focus; goes on with an extraction.
std::optional<AtSpiElementState> findAtSpiFocusedElement(AtSpiService::Core& core,
                                                         const WindowInfo& window,
                                                         const ScreenGeometry& geometry,
                                                         AtSpiDeadline& deadline);

}  // namespace velmora
