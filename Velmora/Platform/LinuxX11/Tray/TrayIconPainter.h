// SPDX-License-Identifier: MIT
#pragma once

#include <xcb/render.h>
#include <xcb/xcb.h>

#include <vector>

#include "Velmora/Platform/LinuxX11/X11Connection.h"
#include "Velmora/Platform/LinuxX11/X11PictureFormats.h"
#include "Velmora/Platform/StatusIconPixmap.h"

namespace velmora {

/// Paints an icon over whatever is in a window, in the size that fits it best.
class TrayIconPainter {
  public:
    TrayIconPainter(X11Connection& connection, std::vector<StatusIconPixmap> icon);

    /// Clears the window and paints the icon into its middle. Nothing where the server cannot blend
    /// pictures.
    void paint(xcb_window_t window, xcb_visualid_t visual, int width, int height);

  private:
    /// The icon at this size, premultiplied, in the server's byte order.
    std::vector<std::uint32_t> pixels(int side) const;

    X11Connection& connection_;
    X11PictureFormats formats_;
    std::vector<StatusIconPixmap> icon_;
};

}  // namespace velmora
