// SPDX-License-Identifier: MIT
#pragma once

#include <vector>

#include "Velmora/Platform/MenuItem.h"

namespace velmora {

/// Whoever owns a tray item hears of its menu here. Main thread.
class StatusItemDelegate {
  public:
    virtual ~StatusItemDelegate() = default;

    /// The entries to show now. May be called often, also without the menu being opened.
    virtual std::vector<MenuItem> menuNeedsUpdate() = 0;

    /// The menu is on the screen. Not called again before `menuDidClose`.
    virtual void menuWillOpen() = 0;

    /// The menu is gone, or it cannot be known any more that it is there.
    virtual void menuDidClose() = 0;
};

}  // namespace velmora
