// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <memory>

#include "Velmora/Platform/Clock.h"
#include "Velmora/Platform/EventMonitor.h"
#include "Velmora/Platform/MainQueue.h"

namespace velmora {

/// Turns the pointer and the modifier keys of the whole desktop into four callbacks: the pointer
/// moved, a button was pressed, the pointer has rested, the modifier keys changed. Knows nothing of
/// texts. Points are in screen space (origin at the bottom left corner of the primary screen, y
/// upwards, in points). Main thread; callbacks arrive there, each in a turn of its own.
class HoverMonitor {
  public:
    /// The three outlive this object.
    HoverMonitor(EventMonitor& events, Clock& clock, MainQueue& mainQueue);
    HoverMonitor(const HoverMonitor&) = delete;
    HoverMonitor& operator=(const HoverMonitor&) = delete;
    ~HoverMonitor();

    /// How long the pointer must rest, in seconds. Holds from the next move on.
    double dwellDelay = 0.25;

    std::function<void(Point)> onMouseMoved;
    std::function<void(Point)> onMouseDown;
    /// The last place that the pointer moved to, and the modifier keys held when the time is up.
    std::function<void(Point, ModifierFlags)> onDwell;
    std::function<void(ModifierFlags)> onModifierFlagsChanged;

    /// Begins to watch. Harmless when it does so already.
    void start();

    /// Ends watching and forgets a pending dwell. Harmless when it does not watch.
    void stop();

    bool isStarted() const { return globalMouseMonitor_ != 0; }

  private:
    using Handling = void (HoverMonitor::*)(ModifierFlags);

    EventMonitor::Handler handler(Handling handling);
    void removeMonitors();
    void moved(ModifierFlags flags);
    void pressed(ModifierFlags flags);
    void flagsChanged(ModifierFlags flags);
    void mouseMoved(Point location);
    void mouseDown(Point location);
    void dwelled();

    EventMonitor& events_;
    Clock& clock_;
    MainQueue& mainQueue_;

    EventMonitor::Token globalMouseMonitor_ = 0;
    EventMonitor::Token localMouseMonitor_ = 0;
    EventMonitor::Token globalMouseDownMonitor_ = 0;
    EventMonitor::Token localMouseDownMonitor_ = 0;
    EventMonitor::Token globalFlagsMonitor_ = 0;
    EventMonitor::Token localFlagsMonitor_ = 0;
    std::unique_ptr<OneShotTimer> dwellTimer_;
    Point lastMouseLocation_;

    // Gone with this object, so that work on the main queue notices.
    std::shared_ptr<HoverMonitor*> self_ = std::make_shared<HoverMonitor*>(this);
};

}  // namespace velmora
