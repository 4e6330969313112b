// SPDX-License-Identifier: MIT
#include "Velmora/Coordination/SoftwareUpdateController.h"

#include <QUrl>
#include <algorithm>
#include <compare>
#include <utility>

#include "Velmora/Coordination/Updates/AppcastParser.h"
#include "Velmora/Coordination/Updates/VersionComparator.h"

namespace velmora {
namespace {

using Phase = UpdateWindowState::Phase;

/// The newest item of a feed that is newer than the running version.
std::optional<AppcastItem> newestUpdate(const std::vector<AppcastItem>& items,
                                        const std::string& currentVersion) {
    const AppcastItem* best = nullptr;
    for (const AppcastItem& item : items) {
        const bool newer = std::is_gt(
            compareVersions(item.version, best == nullptr ? currentVersion : best->version));
        if (newer) {
            best = &item;
        }
    }
    return best == nullptr ? std::nullopt : std::optional(*best);
}

/// The last part of the package's address, reduced to what is safe as a file name.
std::string fileName(const std::string& url) {
    const std::string last = QUrl(QString::fromStdString(url)).fileName().toStdString();
    std::string safe;
    std::copy_if(last.begin(), last.end(), std::back_inserter(safe), [](char c) {
        return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') ||
               c == '.' || c == '-' || c == '_' || c == '+' || c == '~';
    });
    const auto start = safe.find_first_not_of('.');
    return start == std::string::npos ? "velmora-update" : safe.substr(start);
}

}  // namespace

SoftwareUpdateController::SoftwareUpdateController(UpdateConfiguration configuration,
                                                   Services services)
    : configuration_(std::move(configuration)), services_(services) {
    services_.window.setActions([this] { install(); }, [this] { later(); });
    if (configuration_.isComplete()) {
        scheduleCheck(secondsBeforeFirstCheck);
    }
}

std::optional<std::string> SoftwareUpdateController::availableUpdateVersion() const {
    return bestItem_ ? std::optional(bestItem_->displayVersion()) : std::nullopt;
}

void SoftwareUpdateController::observeAvailableUpdateVersion(Observer observer) {
    observer_ = std::move(observer);
    if (observer_) {
        observer_(availableUpdateVersion());
    }
}

void SoftwareUpdateController::checkForUpdates() {
    if (std::string reason = reasonForNoUpdates(); !reason.empty()) {
        showMessage(std::move(reason));
        return;
    }
    if (packageFetch_) {
        services_.window.show(offer());
        return;
    }
    userIsWaiting_ = true;
    UpdateWindowState state;
    state.phase = Phase::checking;
    state.currentVersion = configuration_.currentVersion;
    services_.window.show(state);
    fetchFeed();
}

std::string SoftwareUpdateController::reasonForNoUpdates() const {
    if (!configuration_.isComplete()) {
        return "This build has no update feed.";
    }
    if (services_.installer.isOwnedByPackageManager()) {
        return "Velmora is kept up to date by your package manager.";
    }
    return {};
}

void SoftwareUpdateController::scheduleCheck(double seconds) {
    timer_ = services_.clock.schedule(seconds, [this] {
        scheduleCheck(secondsBetweenChecks);
        if (reasonForNoUpdates().empty()) {
            fetchFeed();
        }
    });
}

void SoftwareUpdateController::fetchFeed() {
    if (feedFetch_ || reading_) {
        return;
    }
    HttpFetcher::Request request;
    request.url = configuration_.feedUrl;
    request.entityTag = feedEntityTag_;
    request.mostBytes = mostFeedBytes;
    feedFetch_ = services_.fetcher.fetch(
        request, [](std::int64_t) {},
        [this](HttpFetcher::Answer answer) { feedArrived(std::move(answer)); });
}

void SoftwareUpdateController::feedArrived(HttpFetcher::Answer answer) {
    feedFetch_.reset();
    if (answer.notModified) {
        showOutcome({});
        return;
    }
    if (!answer.error.empty()) {
        showOutcome("The update feed could not be read: " + answer.error);
        return;
    }
    // A long feed takes longer to read than the main thread may be kept.
    reading_ = std::make_shared<const bool>(true);
    services_.worker.async([this, wish = std::weak_ptr(reading_), answer = std::move(answer),
                            mainQueue = &services_.mainQueue] {
        if (wish.expired()) {
            return;
        }
        mainQueue->post(
            [this, wish, items = AppcastParser::parse(answer.body), entityTag = answer.entityTag] {
                if (!wish.expired()) {
                    feedRead(items, entityTag);
                }
            });
    });
}

void SoftwareUpdateController::feedRead(const std::optional<std::vector<AppcastItem>>& items,
                                        const std::string& entityTag) {
    reading_.reset();
    if (!items) {
        showOutcome("The update feed is damaged.");
        return;
    }
    feedEntityTag_ = entityTag;
    setBestItem(newestUpdate(*items, configuration_.comparedVersion()));
    showOutcome({});
}

void SoftwareUpdateController::setBestItem(std::optional<AppcastItem> item) {
    bestItem_ = std::move(item);
    if (observer_) {
        observer_(availableUpdateVersion());
    }
}

void SoftwareUpdateController::showOutcome(const std::string& failure) {
    if (!std::exchange(userIsWaiting_, false)) {
        return;
    }
    if (!failure.empty()) {
        showMessage(failure);
    } else if (bestItem_) {
        offeredItem_ = bestItem_;
        services_.window.show(offer());
    } else {
        showMessage("Velmora " + configuration_.currentVersion + " is the newest version.");
    }
}

void SoftwareUpdateController::install() {
    if (!offeredItem_ || packageFetch_ || handOver_) {
        return;
    }
    if (offeredItem_->length > mostPackageBytes) {
        showMessage("The update is too large.");
        return;
    }
    HttpFetcher::Request request;
    request.url = offeredItem_->enclosureUrl;
    request.mostBytes = offeredItem_->length;
    request.mostSeconds = mostPackageSeconds;
    packageFetch_ = services_.fetcher.fetch(
        request,
        [this](std::int64_t received) {
            UpdateWindowState state = offer();
            state.progress = std::clamp(
                static_cast<double>(received) / static_cast<double>(offeredItem_->length), 0.0,
                1.0);
            services_.window.update(state);
        },
        [this](HttpFetcher::Answer answer) { packageArrived(std::move(answer)); });
    services_.window.show(offer());
}

void SoftwareUpdateController::packageArrived(HttpFetcher::Answer answer) {
    packageFetch_.reset();
    if (!answer.error.empty()) {
        showMessage("The update could not be downloaded: " + answer.error);
    } else if (offeredItem_) {
        verifyAndHandOver(std::move(answer.body));
    }
}

void SoftwareUpdateController::verifyAndHandOver(std::string package) {
    handOver_ = std::make_shared<const bool>(true);
    services_.worker.async([this, wish = std::weak_ptr(handOver_), package = std::move(package),
                            item = *offeredItem_, key = configuration_.publicKey,
                            verifier = &services_.verifier, installer = &services_.installer,
                            mainQueue = &services_.mainQueue] {
        if (wish.expired()) {
            return;
        }
        std::string outcome;
        if (package.size() != static_cast<std::size_t>(item.length) ||
            !verifier->verify(package, item.edSignature, key)) {
            outcome = "The download is not what its maker signed. It was thrown away.";
        } else {
            outcome = installer->install(package, fileName(item.enclosureUrl));
        }
        if (outcome.empty()) {
            outcome = "The package was handed to the installer of your desktop.";
        }
        mainQueue->post([this, wish, outcome] {
            if (!wish.expired()) {
                handOver_.reset();
                showMessage(outcome);
            }
        });
    });
}

void SoftwareUpdateController::later() {
    userIsWaiting_ = false;
    packageFetch_.reset();
    handOver_.reset();
    offeredItem_.reset();
    services_.window.close();
}

UpdateWindowState SoftwareUpdateController::offer() const {
    UpdateWindowState state;
    state.phase = packageFetch_ ? Phase::downloading : Phase::available;
    state.currentVersion = configuration_.currentVersion;
    if (offeredItem_) {
        state.version = offeredItem_->displayVersion();
        state.releaseNotes = offeredItem_->releaseNotes;
    }
    return state;
}

void SoftwareUpdateController::showMessage(std::string message) {
    UpdateWindowState state;
    state.message = std::move(message);
    state.currentVersion = configuration_.currentVersion;
    services_.window.show(state);
}

}  // namespace velmora
