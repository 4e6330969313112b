// SPDX-License-Identifier: MIT
#pragma once

#include <xcb/xcb.h>

#include <cstdint>

#include "Velmora/Platform/LinuxX11/X11Connection.h"

namespace velmora {

/// How much of a whole window is seen. Programs and window managers ask for it by a property of
/// the top-level window; only a compositing manager obeys, without one it means nothing.
class X11Opacity {
  public:
    static constexpr std::uint32_t opaque = 0xFFFFFFFF;

    explicit X11Opacity(X11Connection& connection);

    bool isCompositing();

    xcb_get_property_cookie_t ask(xcb_window_t topLevel);

    /// From 0, nothing is seen of it, to `opaque`, which it is where nothing else is asked for.
    std::uint32_t answer(xcb_get_property_cookie_t asked);

    /// Nothing of the window is seen: it is there for the pointer alone.
    bool isInvisible(xcb_window_t topLevel);

  private:
    X11Connection& connection_;
    xcb_atom_t selection_ = XCB_ATOM_NONE;
    xcb_atom_t property_ = XCB_ATOM_NONE;
};

}  // namespace velmora
