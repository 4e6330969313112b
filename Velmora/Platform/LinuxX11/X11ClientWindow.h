// SPDX-License-Identifier: MIT
#pragma once

#include <xcb/xcb.h>

#include "Velmora/Platform/Geometry.h"
#include "Velmora/Platform/LinuxX11/X11Connection.h"

namespace velmora {

/// The program's own window inside a child of the root: that window itself where no window manager
/// has put it into a frame, else the one below it that a window manager takes care of (it has
/// WM_STATE), the one under the point where there are several. The given window where there is
/// none, as with menus. Looks a few levels down and at a bounded number of windows.
xcb_window_t x11ClientWindow(X11Connection& connection, xcb_window_t topLevel, Point nativePoint);

/// The child of the root that holds this window; none where the window is gone.
xcb_window_t x11TopLevelOf(X11Connection& connection, xcb_window_t window);

}  // namespace velmora
