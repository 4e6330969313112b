// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <string>

namespace velmora {

/// What the update window shows. A plain value.
struct UpdateWindowState {
    enum class Phase {
        message,      ///< Nothing to decide: `message` says how things are.
        checking,     ///< The feed is being asked.
        available,    ///< "Install" and "Later" are offered.
        downloading,  ///< `progress` moves; "Later" cancels.
    };

    Phase phase = Phase::message;
    std::string message;         ///< One line; empty where version and notes say it all.
    std::string version;         ///< The offered version as people read it.
    std::string currentVersion;  ///< The running one.
    std::string releaseNotes;    ///< Plain text.
    double progress = 0;         ///< 0…1 of the download.

    bool operator==(const UpdateWindowState&) const = default;
};

/// The update window. Main thread.
class UpdatePresenting {
  public:
    virtual ~UpdatePresenting() = default;

    /// What "Install", and what "Later" or closing the window, call.
    virtual void setActions(std::function<void()> install, std::function<void()> later) = 0;

    /// Shows the window if it is not shown yet, with the focus, and this state in it.
    virtual void show(const UpdateWindowState& state) = 0;

    /// Changes the state of the window if it is shown.
    virtual void update(const UpdateWindowState& state) = 0;

    virtual void close() = 0;
};

}  // namespace velmora
