// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "Velmora/Platform/Geometry.h"

namespace velmora {

/// A top-level window as the window system shows it. Rectangles are native pixels of the window
/// system, origin at its top left corner.
struct WindowInfo {
    std::uint64_t id = 0;
    std::int64_t processId = -1;  ///< −1 where it is unknown.
    Rect nativeFrame;             ///< With the window manager's decoration.
    Rect nativeClient;            ///< What the program draws, its own shadow margins included.
    Rect nativeShadow;            ///< The margins left, top, right (as width), bottom (as height).
    std::string title;  ///< UTF-8, empty where there is none; tells windows of one place apart.

    bool operator==(const WindowInfo&) const = default;
};

/// Finds windows of other programs. Callable from the extraction queue.
class WindowLocator {
  public:
    virtual ~WindowLocator() = default;

    /// The topmost mapped window at a point (native pixels), our own overlays and panels looked
    /// through. Nothing over our other windows, over the bare desktop, and where none can be told.
    virtual std::optional<WindowInfo> topmostWindowAt(Point nativePoint) = 0;

    /// The window that has the keyboard focus; nothing where it is ours or there is none.
    virtual std::optional<WindowInfo> focusedWindow() = 0;
};

}  // namespace velmora
