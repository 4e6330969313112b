// SPDX-License-Identifier: MIT
#include "Velmora/Diagnostics/AnalyticsService.h"

#include <QUrl>
#include <array>
#include <cmath>
#include <ctime>
#include <nlohmann/json.hpp>
#include <string_view>
#include <utility>

#include "VelmoraCore/Uuid.h"

namespace velmora {
namespace {

constexpr const char* enabledKey = "analyticsEnabled";
constexpr const char* installIdKey = "analyticsAnonymousInstallID";
constexpr const char* tokenKey = "VELMORA_POSTHOG_TOKEN";
constexpr const char* hostKey = "VELMORA_POSTHOG_HOST";
constexpr const char* defaultHost = "https://eu.i.posthog.com";
constexpr std::string_view namePrefix = "velmora_";
constexpr double requestTimeoutSeconds = 60;

std::string trimmed(const std::string& text, std::string_view what) {
    const auto first = text.find_first_not_of(what);
    if (first == std::string::npos) {
        return {};
    }
    return text.substr(first, text.find_last_not_of(what) - first + 1);
}

std::string trimmedOfBlanks(const std::string& text) {
    return QString::fromStdString(text).trimmed().toStdString();
}

nlohmann::json json(const AnalyticsValue& value) {
    return std::visit([](const auto& alternative) { return nlohmann::json(alternative); }, value);
}

}  // namespace

AnalyticsService::AnalyticsService(Settings& defaults, HttpPoster& poster, const Clock& clock,
                                   ProductInformation product)
    : defaults_(defaults), poster_(poster), clock_(clock), product_(std::move(product)) {}

void AnalyticsService::configure() {
    if (std::exchange(setupAttempted_, true)) {
        return;
    }
    projectToken_ = configurationValue(tokenKey);
    if (!projectToken_) {
        return;
    }
    endpointUrl_ = endpointUrl(configurationValue(hostKey).value_or(defaultHost));
    configured_ = endpointUrl_.has_value();
}

bool AnalyticsService::isEnabled() const {
    return defaults_.boolean(enabledKey).value_or(true);
}

void AnalyticsService::setEnabled(bool enabled) {
    if (enabled == isEnabled()) {
        return;
    }
    // The opt-out itself is the last event that is sent, so it goes before the switch is stored.
    if (!enabled && configured_) {
        capture(AnalyticsEvent::analyticsEnabled, {{"enabled", false}});
    }
    defaults_.setBoolean(enabledKey, enabled);
    if (enabled && configured_) {
        capture(AnalyticsEvent::analyticsEnabled, {{"enabled", true}});
    }
}

void AnalyticsService::capture(AnalyticsEvent event, const AnalyticsProperties& properties) {
    if (!configured_ || !isEnabled()) {
        return;
    }
    const std::string_view name = rawValue(event);
    if (!name.starts_with(namePrefix) || !endpointUrl_ || !projectToken_) {
        return;
    }
    nlohmann::json merged = {
        {"analytics_schema_version", 1},
        {"app_version", product_.shortVersion.value_or("dev")},
        {"app_build", product_.buildNumber.value_or("dev")},
        {"bundle_identifier", product_.bundleIdentifier.value_or("unknown")},
        {"os_version", product_.systemVersion},
        {"$process_person_profile", false},
    };
    for (const auto& [key, value] : properties) {
        merged[key] = json(value);
    }
    const nlohmann::json body = {
        {"api_key", *projectToken_},
        {"distinct_id", anonymousInstallId()},
        {"event", name},
        {"properties", std::move(merged)},
        {"timestamp", timestamp(clock_.wallTime())},
    };
    try {
        poster_.postJson(*endpointUrl_, body.dump(), requestTimeoutSeconds);
    } catch (const nlohmann::json::exception&) {
        // Text that is not UTF-8 cannot be serialised: the event is dropped.
    }
}

std::optional<std::string> AnalyticsService::endpointUrl(const std::string& host) {
    const std::string base = trimmed(trimmedOfBlanks(host), "/");
    if (base.empty()) {
        return std::nullopt;
    }
    const QUrl url(QString::fromStdString(base + "/i/v0/e/"), QUrl::StrictMode);
    const bool isWebAddress = url.scheme() == u"https" || url.scheme() == u"http";
    if (!url.isValid() || !isWebAddress || url.host().isEmpty()) {
        return std::nullopt;
    }
    return url.toString(QUrl::FullyEncoded).toStdString();
}

std::string AnalyticsService::timestamp(double secondsSince1970) {
    const auto seconds = static_cast<std::time_t>(std::floor(secondsSince1970));
    std::tm utc{};
    gmtime_r(&seconds, &utc);
    std::array<char, 32> text{};
    std::strftime(text.data(), text.size(), "%Y-%m-%dT%H:%M:%SZ", &utc);
    return text.data();
}

std::optional<std::string> AnalyticsService::configurationValue(const std::string& key) const {
    for (const auto& source : {product_.environmentValue, product_.informationValue}) {
        const auto value = source ? source(key) : std::nullopt;
        const std::string text = value ? trimmedOfBlanks(*value) : std::string();
        if (!text.empty()) {
            return text;
        }
    }
    return std::nullopt;
}

std::string AnalyticsService::anonymousInstallId() {
    const auto stored = defaults_.text(installIdKey);
    if (stored && !stored->empty()) {
        return *stored;
    }
    std::string fresh = Uuid::random().toString();
    defaults_.setText(installIdKey, fresh);
    return fresh;
}

}  // namespace velmora
