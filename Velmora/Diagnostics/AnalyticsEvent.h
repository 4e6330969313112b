// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <variant>

namespace velmora {

/// The usage events that exist. None ever carries looked-up text.
enum class AnalyticsEvent {
    analyticsEnabled,
    appOpened,
    hoverLookupEnabledChanged,
    lookupPresented,
    onboardingCompleted,
    permissionRequested,
    permissionSettingsOpened,
};

/// The name under which an event is sent.
constexpr std::string_view rawValue(AnalyticsEvent event) {
    switch (event) {
        case AnalyticsEvent::analyticsEnabled:
            return "velmora_analytics_enabled";
        case AnalyticsEvent::appOpened:
            return "velmora_app_opened";
        case AnalyticsEvent::hoverLookupEnabledChanged:
            return "velmora_hover_lookup_enabled_changed";
        case AnalyticsEvent::lookupPresented:
            return "velmora_lookup_presented";
        case AnalyticsEvent::onboardingCompleted:
            return "velmora_onboarding_completed";
        case AnalyticsEvent::permissionRequested:
            return "velmora_permission_requested";
        case AnalyticsEvent::permissionSettingsOpened:
            return "velmora_permission_settings_opened";
    }
    return "";
}

using AnalyticsValue = std::variant<bool, std::int64_t, std::string>;
using AnalyticsProperties = std::map<std::string, AnalyticsValue>;

}  // namespace velmora
