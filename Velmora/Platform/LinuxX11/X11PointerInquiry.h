// SPDX-License-Identifier: MIT
#pragma once

#include <xcb/xcb.h>

#include <cstdint>
#include <optional>

#include "Velmora/Platform/LinuxX11/X11Connection.h"
#include "Velmora/Platform/LinuxX11/X11Ownership.h"
#include "Velmora/Platform/LinuxX11/X11PointerState.h"

namespace velmora {

/// Asks where the pointer is and whether it is over a window of ours, without ever waiting: the
/// server may be at work for others, and its answers arrive like events.
class X11PointerInquiry {
  public:
    struct Result {
        X11PointerState state;  ///< As seen from the root window.
        bool isOverOurs = false;
    };

    /// `device` is the master pointer. The two others outlive this.
    X11PointerInquiry(X11Connection& connection, X11Ownership& ownership, std::uint16_t device);

    /// Sends the first question; none may be under way.
    void begin();
    bool isUnderWay() const { return isUnderWay_; }

    /// Takes in what has been read from the connection and asks further where that needs more.
    /// Nothing as long as answers are missing, and, with the inquiry over, where the server is
    /// gone.
    std::optional<Result> take();

  private:
    void ask(xcb_window_t window);
    std::optional<Result> end(bool isOverOurs);

    X11Connection& connection_;
    X11Ownership& ownership_;
    std::uint16_t device_;
    bool isUnderWay_ = false;
    int level_ = 0;  ///< How deep the window that was asked about lies, the root window being 0.
    X11Ownership::OwnerQuestion owner_;
    unsigned int pointer_ = 0;  ///< The number of the request.
    X11PointerState state_;
};

}  // namespace velmora
