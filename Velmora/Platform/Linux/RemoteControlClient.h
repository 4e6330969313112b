// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>

namespace velmora {

/// Reaches the running program over the session bus. Every call waits a few seconds at most and
/// answers nothing (or false) where none runs.
class RemoteControlClient {
  public:
    bool showSettings();
    bool showOnboarding();
    /// Whether hovering is on now.
    std::optional<bool> toggleHoverLookup();
    std::optional<std::string> diagnostics();
    bool copyDiagnostics();
    /// Returns once the program has left the bus.
    bool quit();
};

}  // namespace velmora
