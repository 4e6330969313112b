// SPDX-License-Identifier: MIT
#pragma once

#include <xcb/render.h>
#include <xcb/xcb.h>

#include <cstdint>

#include "Velmora/Platform/Geometry.h"
#include "Velmora/Platform/LinuxX11/X11Connection.h"
#include "Velmora/Platform/LinuxX11/X11PictureFormats.h"
#include "Velmora/Platform/LinuxX11/X11WindowPictures.h"

namespace velmora {

/// A part of the screen that is put together on the server, black at first. The requests are only
/// sent: what fails (a window that vanished) leaves no trace on the canvas.
class X11Canvas {
  public:
    /// `area` in whole native pixels. The formats must have `argb32`.
    X11Canvas(X11Connection& connection, const X11PictureFormats& formats, const Rect& area);
    ~X11Canvas();
    X11Canvas(const X11Canvas&) = delete;
    X11Canvas& operator=(const X11Canvas&) = delete;

    /// What the root shows: the picture that desktops announce, or else what can be seen of the
    /// root between the windows (below ours it stays black).
    void drawBackground();

    void draw(const X11WindowPicture& picture);

    xcb_pixmap_t pixmap() const { return pixmap_; }

  private:
    xcb_pixmap_t announcedBackground();
    void drawVisibleRoot();
    void drawRootPixels(xcb_drawable_t source, int x, int y, bool repeated);

    X11Connection& connection_;
    const X11PictureFormats& formats_;
    int left_;
    int top_;
    std::uint16_t width_;
    std::uint16_t height_;
    xcb_pixmap_t pixmap_;
    xcb_render_picture_t picture_;
};

}  // namespace velmora
