// SPDX-License-Identifier: MIT
#pragma once

#include <functional>

namespace velmora {

/// Whether the desktop blends windows with what lies below them, and when it has time for them.
/// Main thread.
class Compositor {
  public:
    using Observer = std::function<void(bool compositing)>;

    virtual ~Compositor() = default;

    /// False where a translucent window would show black instead of what lies below it. Kept
    /// current by events; never waits for a reply.
    virtual bool isCompositing() const = 0;

    /// What windows were told waits in a buffer until something happens on the display; this sends
    /// it off at once, without waiting for an answer.
    virtual void sendChanges() {}

    /// Calls `step` once, when the display has answered a question that is sent now; steps are
    /// called in their order, each behind an answer of its own. Window managers and compositors
    /// keep the display for themselves while they take in a window, for a frame or more: who asks
    /// it anything then waits until that is over, and steps that ask come behind it instead.
    /// Called from the event loop, and before this returns only where there is no display to ask.
    virtual void whenAnswered(std::function<void()> step) = 0;

    /// Called with every later change. One observer at a time; an empty one ends it.
    virtual void observe(Observer observer) = 0;
};

}  // namespace velmora
