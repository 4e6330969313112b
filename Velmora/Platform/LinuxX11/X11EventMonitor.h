// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <string>

#include "Velmora/Platform/EventMonitor.h"
#include "Velmora/Platform/LinuxX11/X11ClientRange.h"
#include "Velmora/Platform/ScreenGeometrySource.h"

namespace velmora {

/// Watches an X display over a connection of its own. Main thread; needs its event loop.
///
/// An event is local when the pointer is over one of our windows and global otherwise; overlays
/// that let input through do not count. Motion with a button held is no move, turning a wheel is no
/// press, and motions that arrive together are one. While no monitor is installed the server sends
/// nothing, and while nothing happens nothing runs. Setting the pointer (warping it) is no event.
/// Telling of an event waits for nobody, however long the server is at work for others.
class X11EventMonitor : public EventMonitor {
  public:
    /// `geometry` outlives this; `application` tells which windows are ours besides those that the
    /// server knows to be this process's; the display's name is empty for that of the environment.
    X11EventMonitor(const ScreenGeometrySource& geometry, const X11ClientRange& application,
                    const std::string& display = {});
    ~X11EventMonitor() override;

    Token addGlobalMonitor(EventMask mask, Handler handler) override;
    Token addLocalMonitor(EventMask mask, Handler handler) override;
    void removeMonitor(Token token) override;

    /// While an event is handled, what its handlers posted included, the place where the pointer
    /// was when it was told; the last known place once the server is gone.
    Point mouseLocation() override;
    ModifierFlags modifierFlags() override;

  private:
    struct Parts;
    std::unique_ptr<Parts> parts_;
};

}  // namespace velmora
