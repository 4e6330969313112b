// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "Velmora/Coordination/SoftwareUpdating.h"
#include "Velmora/Coordination/Updates/AppcastItem.h"
#include "Velmora/Coordination/Updates/UpdateConfiguration.h"
#include "Velmora/Coordination/Updates/UpdatePresenting.h"
#include "Velmora/Platform/Clock.h"
#include "Velmora/Platform/HttpFetcher.h"
#include "Velmora/Platform/MainQueue.h"
#include "Velmora/Platform/PackageInstaller.h"
#include "Velmora/Platform/SerialQueue.h"
#include "Velmora/Platform/SignatureVerifier.h"

namespace velmora {

/// Asks the update feed once a day and whenever the user wants to know, publishes the newest
/// version it offers, and on request downloads, verifies and hands over its package. Off where the
/// build has no feed or key and where a package manager owns the program. Main thread.
class SoftwareUpdateController final : public SoftwareUpdating {
  public:
    /// What the controller works with; all outlive it.
    struct Services {
        HttpFetcher& fetcher;
        const SignatureVerifier& verifier;
        PackageInstaller& installer;
        Clock& clock;
        UpdatePresenting& window;
        SerialQueue& worker;  ///< Where feeds are read, packages verified and stored.
        MainQueue& mainQueue;
    };

    static constexpr double secondsBetweenChecks = 24 * 60 * 60;
    static constexpr double secondsBeforeFirstCheck = 60;
    static constexpr std::int64_t mostFeedBytes = std::int64_t{1} << 20;
    static constexpr std::int64_t mostPackageBytes = std::int64_t{512} << 20;
    static constexpr double mostPackageSeconds = 4 * 60 * 60;

    /// Schedules the first check; nothing is fetched before it.
    SoftwareUpdateController(UpdateConfiguration configuration, Services services);

    std::optional<std::string> availableUpdateVersion() const override;
    void observeAvailableUpdateVersion(Observer observer) override;
    void checkForUpdates() override;

  private:
    /// Why this copy does not update itself; empty where it does.
    std::string reasonForNoUpdates() const;

    void scheduleCheck(double seconds);
    void fetchFeed();
    void feedArrived(HttpFetcher::Answer answer);
    void feedRead(const std::optional<std::vector<AppcastItem>>& items,
                  const std::string& entityTag);
    void setBestItem(std::optional<AppcastItem> item);
    void showOutcome(const std::string& failure);
    void install();
    void packageArrived(HttpFetcher::Answer answer);
    void verifyAndHandOver(std::string package);
    void later();
    UpdateWindowState offer() const;
    void showMessage(std::string message);

    UpdateConfiguration configuration_;
    Services services_;
    Observer observer_;
    std::optional<AppcastItem> bestItem_;
    std::optional<AppcastItem> offeredItem_;  ///< In the window; a later check does not change it.
    std::string feedEntityTag_;
    bool userIsWaiting_ = false;
    std::unique_ptr<HttpFetch> feedFetch_;
    std::unique_ptr<HttpFetch> packageFetch_;
    std::unique_ptr<OneShotTimer> timer_;

    /// Work on the queue asks these whether we and the user's wish still exist.
    std::shared_ptr<const bool> reading_;
    std::shared_ptr<const bool> handOver_;
};

}  // namespace velmora
