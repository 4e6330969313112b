// SPDX-License-Identifier: MIT
#pragma once

#include "Velmora/Platform/Linux/AtSpi/AtSpiBus.h"
#include "Velmora/Platform/Linux/AtSpi/AtSpiElementState.h"

namespace velmora {

/// Tells how far the cells that a Qt text reports can be believed, once per element. Worker thread
/// only.
///
/// Rich texts tell the truth. Plain texts put every paragraph at the place of the first one, and
/// answer no position; their cells are worth nothing. Single-line fields leave their margins and
/// scrolling out, but answer positions as they are drawn: where the nearest caret changes from
/// before a character to behind it, its middle is.
void learnQtText(AtSpiBus& bus, AtSpiElementState& state, AtSpiDeadline& deadline);

}  // namespace velmora
