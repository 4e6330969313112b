// SPDX-License-Identifier: MIT
#pragma once

#include "Velmora/Diagnostics/AnalyticsEvent.h"

namespace velmora {

/// Anonymous usage events. Main thread; nothing here ever waits for the network.
class Analytics {
  public:
    virtual ~Analytics() = default;

    /// One-time set-up; later calls do nothing.
    virtual void configure() = 0;

    /// The user's switch.
    virtual bool isEnabled() const = 0;
    virtual void setEnabled(bool enabled) = 0;

    /// Sends one event if analytics is configured and switched on.
    virtual void capture(AnalyticsEvent event, const AnalyticsProperties& properties) = 0;
};

}  // namespace velmora
