// SPDX-License-Identifier: MIT
#pragma once

#include <xcb/xcb.h>

#include <cstdint>
#include <optional>
#include <vector>

#include "Velmora/Platform/Geometry.h"
#include "Velmora/Platform/LinuxX11/X11Connection.h"

namespace velmora {

/// A child of the root window that is on the screen: a window manager's frame, a menu, a panel.
struct X11TopLevel {
    xcb_window_t id = XCB_WINDOW_NONE;
    int x = 0;  ///< The outer corner, border included, in native pixels.
    int y = 0;
    int width = 0;  ///< With the borders.
    int height = 0;
    int border = 0;
    int depth = 0;
    xcb_visualid_t visual = 0;
    bool overrideRedirect = false;

    Rect frame() const {
        return {static_cast<double>(x), static_cast<double>(y), static_cast<double>(width),
                static_cast<double>(height)};
    }
};

/// One top-level window; nothing where it is not mapped, gone, or shows nothing.
std::optional<X11TopLevel> x11TopLevel(X11Connection& connection, xcb_window_t window);

/// The mapped top-level windows that show something, the lowest first. All of them are asked for
/// at once, so that it costs two round trips whatever their number; 4,096 windows are looked at.
std::vector<X11TopLevel> x11TopLevels(X11Connection& connection);

}  // namespace velmora
