// SPDX-License-Identifier: MIT
#include "Velmora/Platform/LinuxX11/X11PointerInquiry.h"

#include <xcb/xcbext.h>
#include <xcb/xinput.h>

namespace velmora {
namespace {

/// A window of ours may sit inside a window manager's frame, and that in others.
constexpr int nestingLimit = 8;

}  // namespace

X11PointerInquiry::X11PointerInquiry(X11Connection& connection, X11Ownership& ownership,
                                     std::uint16_t device)
    : connection_(connection), ownership_(ownership), device_(device) {}

void X11PointerInquiry::begin() {
    isUnderWay_ = true;
    level_ = 0;
    ask(connection_.root());
}

void X11PointerInquiry::ask(xcb_window_t window) {
    if (level_ > 0) {
        owner_ = ownership_.askForOwner(window);
    }
    xcb_connection_t* const c = connection_.get();
    pointer_ = xcb_input_xi_query_pointer(c, window, device_).sequence;
    xcb_flush(c);
}

std::optional<X11PointerInquiry::Result> X11PointerInquiry::take() {
    while (isUnderWay_) {
        void* answer = nullptr;
        xcb_generic_error_t* error = nullptr;
        if (xcb_poll_for_reply(connection_.get(), pointer_, &answer, &error) == 0) {
            return std::nullopt;
        }
        const auto refusal = xcbOwned(error);  // The window is gone.
        const auto reply = xcbOwned(static_cast<xcb_input_xi_query_pointer_reply_t*>(answer));
        // Answers come in the order of the questions, so that this one is there.
        if (level_ > 0 && ownership_.isOurs(owner_)) {
            return end(true);
        }
        if (level_ == 0 && !reply) {
            isUnderWay_ = false;
            return std::nullopt;
        }
        if (level_ == 0) {
            state_ = x11PointerState(*reply);
        }
        if (!reply || reply->child == XCB_WINDOW_NONE || level_ == nestingLimit) {
            return end(false);
        }
        ++level_;
        ask(reply->child);
    }
    return std::nullopt;
}

std::optional<X11PointerInquiry::Result> X11PointerInquiry::end(bool isOverOurs) {
    isUnderWay_ = false;
    return Result{state_, isOverOurs};
}

}  // namespace velmora
