// SPDX-License-Identifier: MIT
#pragma once

#include "Velmora/Platform/StatusItemDelegate.h"
#include "Velmora/Platform/StatusItemLook.h"

namespace velmora {

/// The program's place in the desktop's tray, with a menu. Main thread.
class StatusItem {
  public:
    virtual ~StatusItem() = default;

    /// Puts the item up, now or as soon as the desktop has a tray, and never waits for it. The
    /// delegate outlives the item or a call of `hide`.
    virtual void show(const StatusItemLook& look, StatusItemDelegate& delegate) = 0;

    /// Takes the item away. Ends the menu where it is open.
    virtual void hide() = 0;

    /// A mouse button went down somewhere: a menu that was open is so no more, unless it is known
    /// that the press may have been on it.
    virtual void mousePressedSomewhere() = 0;

    /// The entries may be others now: a menu that is open shows them in place. Asks the delegate,
    /// which may call this again.
    virtual void menuChanged() = 0;
};

}  // namespace velmora
