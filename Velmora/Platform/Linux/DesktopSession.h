// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <memory>

namespace velmora {

/// Notices that the desktop session ends: its bus goes. Where a session manager ends the session,
/// the toolkit ends the program; the manager is told not to start it again by itself, which is what
/// autostart is for. Needs the toolkit's application object. Main thread.
class DesktopSession {
  public:
    /// `ended` is called once. Where there is no session bus from the start, never.
    explicit DesktopSession(std::function<void()> ended);
    DesktopSession(const DesktopSession&) = delete;
    DesktopSession& operator=(const DesktopSession&) = delete;
    ~DesktopSession();

  private:
    class Listener;
    std::unique_ptr<Listener> listener_;
};

}  // namespace velmora
