// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <string>

#include "Velmora/Platform/LinuxX11/X11ClientRange.h"
#include "Velmora/Platform/ScreenCapture.h"
#include "Velmora/Platform/ScreenGeometrySource.h"

namespace velmora {

/// Takes pictures of an X display over a connection of its own, put together from what each window
/// shows (all but ours), with or without a compositing manager. To be made before any window of
/// ours is shown: from then on every window keeps a picture of itself, so that what ours cover is
/// there to be taken. Made on one thread, used on one, which may be another.
class X11ScreenCapture : public ScreenCapture {
  public:
    /// `geometry` outlives this; `application` tells which windows are ours besides those that the
    /// server knows to be this process's; the display's name is empty for that of the environment.
    X11ScreenCapture(const ScreenGeometrySource& geometry, const X11ClientRange& application,
                     const std::string& display = {});
    ~X11ScreenCapture() override;

    /// Whether an X server has what capturing takes; asks the server, so once at start.
    static bool isPossible(const std::string& display = {});

    std::vector<Display> displays() override;

    /// One pixel of the picture is one pixel of the screen, opaque.
    std::optional<Image> capture(std::uint64_t displayId, const Rect& rect) override;

  private:
    struct Parts;
    const ScreenGeometrySource& geometry_;
    std::unique_ptr<Parts> parts_;
};

}  // namespace velmora
