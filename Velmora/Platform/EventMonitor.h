// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <functional>
#include <memory>

#include "Velmora/Platform/Geometry.h"
#include "Velmora/Platform/ModifierFlags.h"

namespace velmora {

/// The kinds of input event that can be watched, as bits of a mask.
enum class EventMask : std::uint32_t {
    mouseMoved = 1U << 5,
    leftMouseDown = 1U << 1,
    rightMouseDown = 1U << 3,
    otherMouseDown = 1U << 25,
    anyMouseDown = leftMouseDown | rightMouseDown | otherMouseDown,
    flagsChanged = 1U << 12,
};

/// Watches the pointer and the modifier keys of the whole desktop. No keystroke is ever read.
/// Main thread; handlers are called on the main thread.
class EventMonitor {
  public:
    /// Gets the modifier flags at the event. The pointer's place is asked for separately.
    using Handler = std::function<void(ModifierFlags)>;

    /// Stands for one installed monitor; never 0.
    using Token = std::uint64_t;

    virtual ~EventMonitor() = default;

    /// Watches events over other programs' windows. 0 where it cannot be installed.
    virtual Token addGlobalMonitor(EventMask mask, Handler handler) = 0;

    /// Watches events over our own windows. Each event goes to exactly one of the two kinds.
    virtual Token addLocalMonitor(EventMask mask, Handler handler) = 0;

    virtual void removeMonitor(Token token) = 0;

    /// Where the pointer is now, in screen space (origin at the bottom left corner of the primary
    /// screen, y upwards, in points).
    virtual Point mouseLocation() = 0;

    /// The modifier keys held now.
    virtual ModifierFlags modifierFlags() = 0;
};

}  // namespace velmora
