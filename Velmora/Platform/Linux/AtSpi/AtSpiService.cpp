// SPDX-License-Identifier: MIT
#include "Velmora/Platform/Linux/AtSpi/AtSpiService.h"

#include <utility>

namespace velmora {

namespace {

constexpr std::chrono::milliseconds firstWait{150};
constexpr std::chrono::milliseconds promptWait{200};

}  // namespace

AtSpiService::AtSpiService() {
    worker_.post([this] { core_ = std::make_unique<Core>(grant_); });
    awaitConnection(firstWait);
}

AtSpiService::~AtSpiService() {
    // What was made on the worker thread ends there; its calls are bounded, so this wait is.
    worker_.finish([this] { core_.reset(); });
}

void AtSpiService::awaitConnection(std::chrono::milliseconds patience) {
    // Jobs run in order, and the first one connects.
    worker_.run<bool>(patience, [] { return true; });
}

AtSpiPresence AtSpiService::presence(std::chrono::milliseconds patience) {
    return worker_.run<AtSpiPresence>(patience, [this] { return core_->bus.presence(); })
        .value_or(AtSpiPresence::silent);
}

void AtSpiService::observeConnections(std::function<void()> observer) {
    worker_.post([this, observer = std::move(observer)] {
        QObject::connect(&core_->bus, &AtSpiBus::connected, &core_->bus, observer);
        if (grant_.reachable) {
            observer();
        }
    });
}

bool AtSpiService::switchOn() {
    worker_.run<bool>(promptWait, [this] {
        if (core_) {
            core_->bus.switchOn();
        }
        return true;
    });
    return grant_.isGiven();
}

}  // namespace velmora
