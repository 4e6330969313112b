// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

#include "Velmora/Diagnostics/Analytics.h"
#include "Velmora/Platform/SystemPermissions.h"

namespace velmora::testing {

/// Grants given and taken by the test.
class RecordedPermissions final : public SystemPermissions {
  public:
    bool accessibilityTrusted() override { return accessibility; }
    bool promptForAccessibility() override {
        ++prompts;
        return accessibility;
    }
    bool screenCapturePermitted() override { return screenCapture; }
    bool requestScreenCapture() override {
        ++requests;
        return screenCapture;
    }
    void openPrivacyPane(const char* anchor) override { panes.emplace_back(anchor); }

    bool accessibility = true;
    bool screenCapture = true;
    int prompts = 0;
    int requests = 0;
    std::vector<std::string> panes;
};

/// Usage events as they would be sent.
class RecordedAnalytics final : public Analytics {
  public:
    struct Captured {
        AnalyticsEvent event;
        AnalyticsProperties properties;
        bool operator==(const Captured&) const = default;
    };

    void configure() override { ++configurations; }
    bool isEnabled() const override { return enabled; }
    void setEnabled(bool on) override { enabled = on; }
    void capture(AnalyticsEvent event, const AnalyticsProperties& properties) override {
        captured.push_back({event, properties});
    }

    int configurations = 0;
    bool enabled = true;
    std::vector<Captured> captured;
};

}  // namespace velmora::testing
