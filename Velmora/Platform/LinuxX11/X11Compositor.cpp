// SPDX-License-Identifier: MIT
#include "Velmora/Platform/LinuxX11/X11Compositor.h"

#include <xcb/xfixes.h>

#include <QGuiApplication>
#include <utility>

#include "Velmora/Platform/LinuxX11/X11Connection.h"
#include "Velmora/Platform/LinuxX11/X11EventPump.h"

namespace velmora {

struct X11Compositor::Parts {
    explicit Parts(const std::string& display)
        : connection(display),
          pump(
              connection, [](const xcb_generic_event_t&) {}, [this] { refresh(); }) {
        if (!connection.isOpen()) {
            return;
        }
        selection = connection.atom("_NET_WM_CM_S" + std::to_string(connection.screenNumber()));
        watch();
        isCompositing = readOwner();
        pump.keepEarlyEvents();
    }

    void watch() const {
        if (!connection.hasExtension(xcb_xfixes_id)) {
            return;
        }
        xcb_connection_t* const c = connection.get();
        xcbOwned(xcb_xfixes_query_version_reply(c, xcb_xfixes_query_version(c, 1, 0), nullptr));
        xcb_xfixes_select_selection_input(
            c, connection.root(), selection,
            XCB_XFIXES_SELECTION_EVENT_MASK_SET_SELECTION_OWNER |
                XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_WINDOW_DESTROY |
                XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_CLIENT_CLOSE);
    }

    bool readOwner() const {
        xcb_connection_t* const c = connection.get();
        const auto reply = xcbOwned(
            xcb_get_selection_owner_reply(c, xcb_get_selection_owner(c, selection), nullptr));
        return reply && reply->owner != XCB_WINDOW_NONE;
    }

    void refresh() {
        const bool now = readOwner();
        if (now == isCompositing) {
            return;
        }
        isCompositing = now;
        const Observer called = observer;  // It may put another one into its place.
        if (called) {
            called(now);
        }
    }

    X11Connection connection;
    xcb_atom_t selection = XCB_ATOM_NONE;
    bool isCompositing = false;
    Observer observer;
    X11EventPump pump;
};

X11Compositor::X11Compositor(const std::string& display)
    : parts_(std::make_unique<Parts>(display)) {}

X11Compositor::~X11Compositor() = default;

bool X11Compositor::isCompositing() const {
    return parts_->isCompositing;
}

void X11Compositor::sendChanges() {
    // The connection on which the toolkit tells of its windows.
    const auto* const native = qGuiApp == nullptr
                                   ? nullptr
                                   : qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    if (native != nullptr) {
        xcb_flush(native->connection());
    }
}

void X11Compositor::observe(Observer observer) {
    parts_->observer = std::move(observer);
}

}  // namespace velmora
