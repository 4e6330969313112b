// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <vector>

#include "Velmora/Coordination/LookupPresentation.h"
#include "Velmora/Platform/Geometry.h"
#include "Velmora/Platform/Screens.h"

namespace velmora {

/// Where the pointer may be without a shown lookup going away, and where it may rest without a new
/// one. Pure functions; everything in screen space (origin at the bottom left corner of the primary
/// screen, y upwards, in points).

/// How far the pointer may stray from the word and from the popover, in points.
inline constexpr double lookupDismissalSlop = 18.0;

/// How far around the panel a click or a rest still counts as on it, in points.
inline constexpr double panelMargin = 6.0;

/// The height of the strip at the top of every screen where no dwell counts, in points.
inline constexpr double menuBarHeight = 40.0;

/// Within the word's surroundings; for the dictionary popover also within the panel's, and in the
/// corridor between the two. `panelFrame` is that of the visible panel, if there is one.
bool isInsideActiveLookupArea(Point point, const LookupPresentation& presentation,
                              const std::optional<Rect>& panelFrame);

/// On the panel or within its margin.
bool isOnPanel(Point point, const Rect& panelFrame);

/// In the top strip of the first screen that holds the point; false on no screen.
bool isMenuBarPoint(Point point, const std::vector<Screen>& screens);

}  // namespace velmora
