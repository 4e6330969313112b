// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QSocketNotifier>
#include <deque>
#include <functional>
#include <memory>

#include "Velmora/Platform/LinuxX11/X11Connection.h"

namespace velmora {

/// Hands the events of a connection to their owner on the main thread as they arrive; sleeps
/// otherwise. A broken connection is left alone.
class X11EventPump : public QObject {
  public:
    using Handler = std::function<void(const xcb_generic_event_t&)>;

    /// `handle` gets each event; `finish` is called after each batch of them, and when an answer
    /// that nobody waits for has come, and may ask the server.
    X11EventPump(X11Connection& connection, Handler handle, std::function<void()> finish);

    /// To be called after waiting for a reply outside the two handlers: events that came with the
    /// reply wake nobody up. They are handled by the next turn of the event loop.
    void keepEarlyEvents();

    /// Calls `finish` in the next turn of the event loop: an answer may have come together with
    /// one that was waited for, which wakes nobody up either.
    void finishSoon();

  private:
    void drain();
    XcbOwned<xcb_generic_event_t> next();
    /// Of those that have been read from the connection already.
    XcbOwned<xcb_generic_event_t> nextRead();

    X11Connection& connection_;
    Handler handle_;
    std::function<void()> finish_;
    std::deque<XcbOwned<xcb_generic_event_t>> early_;
    std::unique_ptr<QSocketNotifier> notifier_;
};

}  // namespace velmora
