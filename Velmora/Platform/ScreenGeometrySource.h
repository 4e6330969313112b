// SPDX-License-Identifier: MIT
#pragma once

#include "Velmora/Platform/ScreenGeometry.h"

namespace velmora {

/// Tells how the screens stand now. Callable from any thread; never waits for the window system.
class ScreenGeometrySource {
  public:
    virtual ~ScreenGeometrySource() = default;

    /// A snapshot, without screens where none is attached.
    virtual ScreenGeometry current() const = 0;
};

}  // namespace velmora
