// SPDX-License-Identifier: MIT
#pragma once

#include <xcb/xcb.h>

#include <cstdint>
#include <vector>

#include "Velmora/Platform/Geometry.h"
#include "Velmora/Platform/LinuxX11/X11Connection.h"
#include "Velmora/Platform/LinuxX11/X11Opacity.h"
#include "Velmora/Platform/LinuxX11/X11Ownership.h"
#include "Velmora/Platform/LinuxX11/X11PictureFormats.h"
#include "Velmora/Platform/LinuxX11/X11TopLevels.h"

namespace velmora {

/// What one window shows, kept by the server apart from what covers it.
struct X11WindowPicture {
    X11TopLevel window;
    xcb_pixmap_t pixmap = XCB_NONE;  ///< From the window's outer corner, its border included.
    X11PictureFormats::Format format;
    std::uint32_t opacity = X11Opacity::opaque;  ///< Of the whole window.
    bool isBlended = false;                      ///< What lies below shows through.
    bool coversAll = false;                      ///< Nothing below it is seen in the wanted area.
};

/// Takes the pictures of all windows but ours. A window's picture is another one whenever the
/// window has changed its size or was hidden, so it is asked for anew each time.
class X11WindowPictures {
  public:
    X11WindowPictures(X11Connection& connection, X11Ownership& ownership,
                      const X11PictureFormats& formats);

    /// The windows that show in an area (native pixels), the lowest first, beginning with the one
    /// below which nothing is seen. Windows that vanish meanwhile are left out.
    std::vector<X11WindowPicture> take(const Rect& area);

    void giveBack(const std::vector<X11WindowPicture>& pictures);

  private:
    std::vector<X11TopLevel> candidates(const Rect& area);
    X11Connection& connection_;
    X11Ownership& ownership_;
    const X11PictureFormats& formats_;
    X11Opacity opacity_;
};

}  // namespace velmora
