// SPDX-License-Identifier: MIT
#include "Velmora/Platform/LinuxX11/X11ServerLoss.h"

#include <xcb/xcb.h>

#include <QGuiApplication>
#include <atomic>
#include <cstdlib>

// Last: its macros are named like many things.
#include <X11/Xlib.h>

namespace velmora {

namespace {

std::atomic<xcb_connection_t*> watched{nullptr};

// Nothing is lost by ending at once: settings are stored when they are set, and what talks to other
// processes is told by the kernel.
int endWithServer(Display* /*display*/) {
    std::_Exit(EXIT_SUCCESS);
}

/// Where the toolkit sees it first, it ends the program by itself, with a failure.
void correctExitStatus() {
    xcb_connection_t* const connection = watched;
    if (connection != nullptr && xcb_connection_has_error(connection) != 0) {
        std::_Exit(EXIT_SUCCESS);
    }
}

}  // namespace

X11ServerLoss::X11ServerLoss() {
    const auto* const x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    if (x11 == nullptr) {
        return;
    }
    watched = x11->connection();
    [[maybe_unused]] static const int registered = std::atexit(correctExitStatus);
    XSetIOErrorHandler(endWithServer);
}

X11ServerLoss::~X11ServerLoss() {
    if (watched.exchange(nullptr) != nullptr) {
        XSetIOErrorHandler(nullptr);
    }
}

}  // namespace velmora
