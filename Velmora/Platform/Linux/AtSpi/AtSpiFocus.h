// SPDX-License-Identifier: MIT
#pragma once

#include <optional>

#include "Velmora/Platform/Linux/AtSpi/AtSpiApplications.h"

namespace velmora {

/// The object of a program that has the keyboard focus: the one of which it last told, or, where it
/// told nothing since we listen, the one that says so in a short walk through the window.
std::optional<AtSpiObject> findAtSpiFocus(AtSpiBus& bus, const AtSpiApplication& application,
                                          const AtSpiObject& window, AtSpiDeadline& deadline);

}  // namespace velmora
