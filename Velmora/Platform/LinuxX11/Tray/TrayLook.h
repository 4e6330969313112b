// SPDX-License-Identifier: MIT
#pragma once

#include <QPalette>
#include <optional>

#include "Velmora/Platform/DesktopAppearance.h"

class QStyle;

namespace velmora {

/// The colours of the tray's own windows in light or dark; light where the desktop does not say.
/// Chosen lines have the colours of the desktop. Main thread.
QPalette trayPalette(std::optional<DesktopAppearance::ColorScheme> scheme);

/// What draws the tray's own windows, the same on every desktop. Main thread.
QStyle* trayStyle();

}  // namespace velmora
