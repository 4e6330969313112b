// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace velmora {

class AtSpiService;

/// The accessibility half of the desktop's grants: the switch of the accessibility bus. Main
/// thread.
class AtSpiPermission {
  public:
    /// Starts a program and leaves it alone; tells whether it could be started.
    using Launcher = std::function<bool(const std::vector<std::string>& command)>;

    explicit AtSpiPermission(std::shared_ptr<AtSpiService> service);

    /// The present state as the bus told it last. Never waits.
    bool accessibilityTrusted() const;

    /// Switches accessibility on (the user has pressed a button for it) and tells whether it is on
    /// and reachable, after 200 ms at most.
    bool promptForAccessibility();

    /// The commands that show the desktop's own page for "Privacy_Accessibility" or
    /// "Privacy_ScreenCapture", the best first, for a desktop of this name (XDG_CURRENT_DESKTOP);
    /// the last one shows `help` in the browser. None for other anchors.
    static std::vector<std::vector<std::string>> commandsFor(const std::string& anchor,
                                                             const std::string& desktop,
                                                             const std::string& help);

    /// Runs the first of these commands that can be started.
    static void openPrivacyPane(const std::string& anchor, const std::string& desktop,
                                const std::string& help, const Launcher& launcher);
    static void openPrivacyPane(const std::string& anchor, const std::string& help);

  private:
    std::shared_ptr<AtSpiService> service_;
};

}  // namespace velmora
