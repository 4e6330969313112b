// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>

#include "Velmora/Diagnostics/Analytics.h"
#include "Velmora/Platform/Clock.h"
#include "Velmora/Platform/HttpPoster.h"
#include "Velmora/Platform/ProductInformation.h"
#include "Velmora/Platform/Settings.h"

namespace velmora {

/// Sends a handful of anonymous usage events to a capture endpoint. Inert unless a project token
/// is configured for the build or the process; the user can switch it off; it never sees any
/// looked-up text. Everything that goes wrong is silent. Main thread.
class AnalyticsService final : public Analytics {
  public:
    /// The three outlive the service.
    AnalyticsService(Settings& defaults, HttpPoster& poster, const Clock& clock,
                     ProductInformation product);

    void configure() override;
    bool isEnabled() const override;
    void setEnabled(bool enabled) override;
    void capture(AnalyticsEvent event, const AnalyticsProperties& properties) override;

    /// The capture endpoint for a configured host: its blanks and outer slashes trimmed, the
    /// capture path appended. Nothing where no valid address results.
    static std::optional<std::string> endpointUrl(const std::string& host);

    /// UTC in the internet date-time form without fractions: 2025-01-31T08:15:00Z.
    static std::string timestamp(double secondsSince1970);

  private:
    std::optional<std::string> configurationValue(const std::string& key) const;
    std::string anonymousInstallId();

    Settings& defaults_;
    HttpPoster& poster_;
    const Clock& clock_;
    ProductInformation product_;
    bool setupAttempted_ = false;
    bool configured_ = false;
    std::optional<std::string> endpointUrl_;
    std::optional<std::string> projectToken_;
};

}  // namespace velmora
