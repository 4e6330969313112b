// SPDX-License-Identifier: MIT
#pragma once

#include "Velmora/Coordination/SoftwareUpdating.h"
#include "Velmora/Platform/Unavailable/Unavailability.h"

namespace velmora {

/// Never an update.
class UnavailableSoftwareUpdates final : public SoftwareUpdating, public Unavailability {
  public:
    using Unavailability::Unavailability;

    std::optional<std::string> availableUpdateVersion() const override { return std::nullopt; }
    void observeAvailableUpdateVersion(Observer observer) override {
        if (observer) {
            observer(std::nullopt);
        }
    }
    void checkForUpdates() override {}
};

}  // namespace velmora
