// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <memory>
#include <optional>

#include "Velmora/Platform/ScreenCapture.h"
#include "Velmora/TextCapture/CapturedImage.h"

namespace velmora {

/// Captures the real screen around a point, on one display at a time. Usable as a CaptureFunction.
class LiveCapture {
  public:
    explicit LiveCapture(std::shared_ptr<ScreenCapture> screen);

    /// The display that holds the point (capture space), else the main one, if there is any.
    std::optional<std::uint64_t> liveDisplayID(Point point) const;

    /// The rectangle of this size around the pointer, clipped to its display and grown to whole
    /// points; nothing where that is empty or cannot be captured.
    std::optional<CapturedImage> operator()(Point pointer, Size size) const;

  private:
    std::optional<Display> displayContaining(Point point) const;

    std::shared_ptr<ScreenCapture> screen_;
};

}  // namespace velmora
