// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <memory>
#include <string>

namespace velmora {

/// What a user's commands can ask of the running program.
struct RemoteControlActions {
    std::function<void()> showSettings;
    std::function<void()> showOnboarding;
    std::function<bool()> toggleHoverLookup;  ///< Tells whether hovering is on now.
    std::function<std::string()> diagnostics;
    std::function<void()> copyDiagnostics;  ///< To the clipboard.
    std::function<void()> quit;
};

/// Offers the actions on the session bus under the program's name. Without a session bus nothing
/// is offered and nothing else suffers. Actions run on the main thread.
class RemoteControlService {
  public:
    /// Returns at once; the name is asked for in the background.
    explicit RemoteControlService(RemoteControlActions actions);
    RemoteControlService(const RemoteControlService&) = delete;
    RemoteControlService& operator=(const RemoteControlService&) = delete;
    ~RemoteControlService();

    /// Whether there is a session bus on which the actions are offered.
    bool isOffered() const { return offered_; }

  private:
    class Exported;
    std::unique_ptr<Exported> exported_;
    bool offered_ = false;
};

}  // namespace velmora
