// SPDX-License-Identifier: MIT
#pragma once

#include <functional>

namespace velmora {

/// Whether the desktop blends windows with what lies below them. Main thread.
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

    /// Called with every later change. One observer at a time; an empty one ends it.
    virtual void observe(Observer observer) = 0;
};

}  // namespace velmora
