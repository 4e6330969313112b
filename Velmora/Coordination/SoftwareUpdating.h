// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <optional>
#include <string>

namespace velmora {

/// Knows whether a newer version is to be had. Main thread.
class SoftwareUpdating {
  public:
    using Observer = std::function<void(const std::optional<std::string>& version)>;

    virtual ~SoftwareUpdating() = default;

    /// The display version of the newest valid update, nothing where there is none.
    virtual std::optional<std::string> availableUpdateVersion() const = 0;

    /// Called with the current value at once and with every later one. One observer at a time.
    virtual void observeAvailableUpdateVersion(Observer observer) = 0;

    /// A check that the user asked for, with the update window.
    virtual void checkForUpdates() = 0;
};

}  // namespace velmora
