// SPDX-License-Identifier: MIT
#pragma once

#include "Velmora/Diagnostics/Analytics.h"
#include "Velmora/Platform/Settings.h"

namespace velmora {

/// Keeps the user's switch and sends nothing.
class InertAnalytics final : public Analytics {
  public:
    /// The settings outlive this object.
    explicit InertAnalytics(Settings& settings) : settings_(settings) {}

    void configure() override {}
    bool isEnabled() const override { return settings_.boolean(enabledKey).value_or(true); }
    void setEnabled(bool enabled) override {
        if (enabled != isEnabled()) {
            settings_.setBoolean(enabledKey, enabled);
        }
    }
    void capture(AnalyticsEvent /*event*/, const AnalyticsProperties& /*properties*/) override {}

  private:
    static constexpr const char* enabledKey = "analyticsEnabled";

    Settings& settings_;
};

}  // namespace velmora
