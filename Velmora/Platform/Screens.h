// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <vector>

#include "Velmora/Platform/Geometry.h"

namespace velmora {

/// One screen, in screen space (origin at the bottom left corner of the primary screen, y upwards,
/// in points).
struct Screen {
    Rect frame;
    Rect visibleFrame;  ///< The frame less panels and docks.

    bool operator==(const Screen&) const = default;
};

/// The screens of the desktop. Callable from any thread.
class Screens {
  public:
    virtual ~Screens() = default;

    /// Every screen, the primary one first; empty where there is none.
    virtual std::vector<Screen> all() const = 0;
};

}  // namespace velmora
