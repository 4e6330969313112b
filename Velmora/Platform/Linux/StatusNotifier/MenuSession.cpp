// SPDX-License-Identifier: MIT
#include "Velmora/Platform/Linux/StatusNotifier/MenuSession.h"

#include <algorithm>
#include <utility>

namespace velmora {

namespace {

/// More hosts than any desktop has; beyond them somebody plays with us.
constexpr std::size_t hostLimit = 16;

}  // namespace

MenuSession::MenuSession(Clock& clock, Changed changed)
    : clock_(clock), changed_(std::move(changed)) {}

MenuSession::~MenuSession() = default;

MenuSession::Host& MenuSession::known(const std::string& host) {
    if (!hosts_.contains(host) && hosts_.size() >= hostLimit) {
        const auto other = std::ranges::find_if(
            hosts_, [this](const auto& entry) { return entry.first != owner_; });
        hosts_.erase(other);
    }
    const auto [found, isNew] = hosts_.try_emplace(host);
    if (isNew) {
        found->second.allowanceAt = clock_.uptime();
    }
    return found->second;
}

void MenuSession::aboutToShow(const std::string& host) {
    const Host& asking = known(host);
    if (!asking.tellsOpening && !asking.onlyAsks && !isOpen()) {
        begin(host, askedLimit);
        ownerOnlyAsked_ = isOpen();
    }
}

void MenuSession::opened(const std::string& host) {
    known(host).tellsOpening = true;
    if (owner_ == host && !ownerOnlyAsked_) {
        return;
    }
    begin(host, openLimit);
    ownerOnlyAsked_ = false;
}

void MenuSession::closed(const std::string& host) {
    known(host).tellsClosing = true;
    endOf(host);
}

void MenuSession::endOf(const std::string& host) {
    if (owner_ == host) {
        end();
    }
}

void MenuSession::triggered(const std::string& host) {
    Host& used = known(host);
    used.onlyAsks = false;
    end();
    used.allowance = openLimit;
}

void MenuSession::hostLeft(const std::string& host) {
    endOf(host);
    hosts_.erase(host);
}

void MenuSession::mousePressed() {
    if (!owner_ || !known(*owner_).tellsClosing) {
        end();
        return;
    }
    const double end = clock_.uptime() + pressedLimit;
    if (end < endsAt_) {
        endsAt_ = end;
        limit_ = clock_.schedule(pressedLimit, [this] { this->end(); });
    }
}

void MenuSession::begin(const std::string& host, double limit) {
    if (owner_ && owner_ != host) {
        end();
    }
    const bool wasOpen = isOpen();
    settle(known(host), wasOpen);
    const double allowed = std::min(limit, known(host).allowance);
    if (allowed <= 0) {
        return;
    }
    owner_ = host;
    endsAt_ = clock_.uptime() + allowed;
    limit_ = clock_.schedule(allowed, [this, asked = limit == askedLimit] { expire(asked); });
    if (!wasOpen) {
        changed_(true);
    }
}

void MenuSession::settle(Host& host, bool wasOpen) {
    const double now = clock_.uptime();
    const double passed = now - host.allowanceAt;
    host.allowance = std::clamp(host.allowance + (wasOpen ? -passed : passed), 0.0, openLimit);
    host.allowanceAt = now;
}

void MenuSession::expire(bool asked) {
    if (asked && owner_) {
        known(*owner_).onlyAsks = true;
    }
    end();
}

void MenuSession::end() {
    if (!owner_) {
        return;
    }
    const std::string host = *std::exchange(owner_, std::nullopt);
    limit_.reset();
    ownerOnlyAsked_ = false;
    settle(known(host), true);
    changed_(false);
}

}  // namespace velmora
