// SPDX-License-Identifier: MIT
#include "Velmora/Coordination/HoverMonitor.h"

#include <cmath>
#include <utility>

namespace velmora {

namespace {

/// A hand at rest trembles this much, in points.
constexpr double jitter = 2.0;

}  // namespace

HoverMonitor::HoverMonitor(EventMonitor& events, Clock& clock, MainQueue& mainQueue)
    : events_(events), clock_(clock), mainQueue_(mainQueue) {}

HoverMonitor::~HoverMonitor() {
    stop();
}

void HoverMonitor::start() {
    if (globalMouseMonitor_ != 0) {
        return;
    }
    // What an attempt left behind that got no global monitor.
    removeMonitors();
    globalMouseMonitor_ =
        events_.addGlobalMonitor(EventMask::mouseMoved, handler(&HoverMonitor::moved));
    localMouseMonitor_ =
        events_.addLocalMonitor(EventMask::mouseMoved, handler(&HoverMonitor::moved));
    globalMouseDownMonitor_ =
        events_.addGlobalMonitor(EventMask::anyMouseDown, handler(&HoverMonitor::pressed));
    localMouseDownMonitor_ =
        events_.addLocalMonitor(EventMask::anyMouseDown, handler(&HoverMonitor::pressed));
    globalFlagsMonitor_ =
        events_.addGlobalMonitor(EventMask::flagsChanged, handler(&HoverMonitor::flagsChanged));
    localFlagsMonitor_ =
        events_.addLocalMonitor(EventMask::flagsChanged, handler(&HoverMonitor::flagsChanged));
}

void HoverMonitor::stop() {
    removeMonitors();
    dwellTimer_.reset();
}

void HoverMonitor::removeMonitors() {
    for (EventMonitor::Token* token :
         {&globalMouseMonitor_, &localMouseMonitor_, &globalMouseDownMonitor_,
          &localMouseDownMonitor_, &globalFlagsMonitor_, &localFlagsMonitor_}) {
        if (*token != 0) {
            events_.removeMonitor(std::exchange(*token, 0));
        }
    }
}

EventMonitor::Handler HoverMonitor::handler(Handling handling) {
    return [weak = std::weak_ptr(self_), &mainQueue = mainQueue_, handling](ModifierFlags flags) {
        mainQueue.post([weak, handling, flags] {
            const auto self = weak.lock();
            // An event that was under way when watching ended must not begin a dwell.
            if (self && (*self)->isStarted()) {
                ((*self)->*handling)(flags);
            }
        });
    };
}

void HoverMonitor::moved(ModifierFlags /*flags*/) {
    mouseMoved(events_.mouseLocation());
}

void HoverMonitor::pressed(ModifierFlags /*flags*/) {
    mouseDown(events_.mouseLocation());
}

// One handler among several of the same kind.
// NOLINTNEXTLINE(readability-make-member-function-const)
void HoverMonitor::flagsChanged(ModifierFlags flags) {
    if (onModifierFlagsChanged) {
        onModifierFlagsChanged(flags.masked());
    }
}

void HoverMonitor::mouseMoved(Point location) {
    const double distance =
        std::hypot(location.x - lastMouseLocation_.x, location.y - lastMouseLocation_.y);
    // The second half refuses a place that is not a number.
    if (distance <= jitter || !std::isfinite(distance)) {
        return;
    }
    lastMouseLocation_ = location;
    if (onMouseMoved) {
        onMouseMoved(location);
    }
    dwellTimer_.reset();
    if (isStarted()) {
        dwellTimer_ = clock_.schedule(dwellDelay, [weak = std::weak_ptr(self_)] {
            if (const auto self = weak.lock()) {
                (*self)->dwelled();
            }
        });
    }
}

void HoverMonitor::dwelled() {
    if (onDwell) {
        onDwell(lastMouseLocation_, events_.modifierFlags().masked());
    }
}

void HoverMonitor::mouseDown(Point location) {
    dwellTimer_.reset();
    if (!std::isfinite(location.x) || !std::isfinite(location.y)) {
        return;
    }
    lastMouseLocation_ = location;
    if (onMouseDown) {
        onMouseDown(location);
    }
}

}  // namespace velmora
