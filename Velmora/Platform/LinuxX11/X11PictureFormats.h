// SPDX-License-Identifier: MIT
#pragma once

#include <xcb/render.h>
#include <xcb/xcb.h>

#include <map>
#include <optional>

#include "Velmora/Platform/LinuxX11/X11Connection.h"

namespace velmora {

/// How the server's pictures lay out their pixels. Read once.
class X11PictureFormats {
  public:
    struct Format {
        xcb_render_pictformat_t id = 0;
        bool hasAlpha = false;
    };

    explicit X11PictureFormats(X11Connection& connection);

    /// Eight bits each of alpha, red, green and blue from the highest down; nothing where the
    /// server has no such format.
    std::optional<xcb_render_pictformat_t> argb32() const { return argb32_; }

    /// The format of windows of this visual.
    std::optional<Format> ofVisual(xcb_visualid_t visual) const;

  private:
    std::optional<xcb_render_pictformat_t> argb32_;
    std::map<xcb_visualid_t, Format> visuals_;
};

}  // namespace velmora
