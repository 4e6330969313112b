// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <string>

#include "Velmora/Platform/LinuxX11/X11ClientRange.h"
#include "Velmora/Platform/WindowLocator.h"

namespace velmora {

/// Finds windows on an X display over a connection of its own. Used by one thread at a time, not
/// necessarily the one that made it. Without a server every answer is nothing.
///
/// What a point hits follows the server's own rules: stacking order, shapes for drawing and for
/// input. Windows without pixels (input only) are looked through.
class X11WindowLocator : public WindowLocator {
  public:
    /// `application` tells which windows are ours besides those that the server knows to be this
    /// process's; the display's name is empty for that of the environment.
    explicit X11WindowLocator(const X11ClientRange& application, const std::string& display = {});
    ~X11WindowLocator() override;

    std::optional<WindowInfo> topmostWindowAt(Point nativePoint) override;
    std::optional<WindowInfo> focusedWindow() override;

  private:
    struct Parts;
    std::unique_ptr<Parts> parts_;
};

}  // namespace velmora
