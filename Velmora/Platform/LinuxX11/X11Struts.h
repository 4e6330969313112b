// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <set>
#include <vector>

#include "Velmora/Platform/Geometry.h"
#include "Velmora/Platform/LinuxX11/X11Connection.h"

namespace velmora {

/// Edges of the desktop that one window keeps free, and where that window stands.
struct X11Strut {
    Rect window;              ///< Native pixels; with its border.
    std::vector<Rect> taken;  ///< Native pixels; one rectangle for each side that is taken.
};

/// The windows of panels and docks: every managed window that takes an edge, and those that may
/// come to take one.
struct X11Struts {
    std::vector<X11Strut> struts;
    std::set<xcb_window_t> windows;  ///< Whose changes matter.
};

/// Reads them; without a window manager's list of windows the children of the root are looked at.
X11Struts x11Struts(X11Connection& connection);

/// What panels leave of a screen. A strut counts from the edge of the whole desktop and so also
/// crosses the screens between that edge and its window: it is taken from the screens where its
/// window stands, or, where that is nowhere, from those that it does not cover whole.
Rect x11WorkArea(const Rect& screen, const std::vector<Rect>& allScreens,
                 const std::vector<X11Strut>& struts);

}  // namespace velmora
