// SPDX-License-Identifier: MIT
#pragma once

#include <xcb/res.h>
#include <xcb/xcb.h>

#include <cstdint>
#include <optional>

#include "Velmora/Platform/LinuxX11/X11ClientRange.h"
#include "Velmora/Platform/LinuxX11/X11Connection.h"

namespace velmora {

/// Tells whose windows are whose. A window is ours when it was made over the application's
/// connection, or over any other connection that the server knows to be of this process (a
/// toolkit's file dialog may open one of its own).
class X11Ownership {
  public:
    X11Ownership(X11Connection& connection, const X11ClientRange& application);

    bool isOurs(xcb_window_t window);

    /// The process behind a window: what the server knows of the connection and what the program
    /// says of itself; −1 where neither tells.
    std::int64_t processId(xcb_window_t window);

  private:
    std::optional<std::uint32_t> serverProcessId(xcb_window_t window);

    X11Connection& connection_;
    X11ClientRange application_;
    bool serverKnows_ = false;
    std::optional<std::uint32_t> ourServerProcessId_;
};

}  // namespace velmora
