// SPDX-License-Identifier: MIT
#pragma once

namespace velmora::businspection {

/// Questions to the session bus and to programs on it. Each waits two seconds for an answer and is
/// false without one; the bus itself may take longer to connect to. Any thread.

bool hasSessionBus();

/// Whether the accessibility bus is there. Asking starts it where the desktop knows how.
bool hasAccessibilityBus();

/// Whether programs are told to offer their texts.
bool isAccessibilityEnabled();

/// Whether a watcher of tray items is there that knows somebody who shows them.
bool hasTrayHost();

}  // namespace velmora::businspection
