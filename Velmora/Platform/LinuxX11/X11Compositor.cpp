// SPDX-License-Identifier: MIT
#include "Velmora/Platform/LinuxX11/X11Compositor.h"

#include <xcb/xcbext.h>
#include <xcb/xfixes.h>

#include <QGuiApplication>
#include <deque>
#include <utility>

#include "Velmora/Platform/LinuxX11/X11Connection.h"
#include "Velmora/Platform/LinuxX11/X11EventPump.h"

namespace velmora {

struct X11Compositor::Parts {
    explicit Parts(const std::string& display)
        : connection(display),
          pump(
              connection, [this](const xcb_generic_event_t& event) { note(event); },
              [this] { takeAnswer(); }) {
        if (!connection.isOpen()) {
            return;
        }
        selection = connection.atom("_NET_WM_CM_S" + std::to_string(connection.screenNumber()));
        watch();
        isCompositing = readOwner();
        pump.keepEarlyEvents();
    }

    void watch() {
        if (!connection.hasExtension(xcb_xfixes_id)) {
            return;
        }
        firstEvent = xcb_get_extension_data(connection.get(), &xcb_xfixes_id)->first_event;
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

    void note(const xcb_generic_event_t& event) {
        constexpr int sentByClients = 0x80;
        if (firstEvent == 0 ||
            (event.response_type & ~sentByClients) != firstEvent + XCB_XFIXES_SELECTION_NOTIFY) {
            return;
        }
        const auto& change = reinterpret_cast<const xcb_xfixes_selection_notify_event_t&>(event);
        // Of an owner that is gone it still gives the name.
        const bool now = change.subtype == XCB_XFIXES_SELECTION_EVENT_SET_SELECTION_OWNER &&
                         change.owner != XCB_WINDOW_NONE;
        if (now == isCompositing) {
            return;
        }
        isCompositing = now;
        const Observer called = observer;  // It may put another one into its place.
        if (called) {
            called(now);
        }
    }

    void add(std::function<void()> step) {
        steps.push_back(std::move(step));
        if (steps.size() == 1) {
            ask();
        }
    }

    /// What it answers is of no interest.
    void ask() {
        question = xcb_get_input_focus(connection.get()).sequence;
        xcb_flush(connection.get());
    }

    /// A step may change something that keeps the display busy, so that the next one needs an
    /// answer that comes behind it. Where the server is gone, every question counts as answered.
    void takeAnswer() {
        while (!steps.empty() && !isInStep && isAnswered()) {
            const std::function<void()> step = std::move(steps.front());
            isInStep = true;
            step();
            isInStep = false;
            steps.pop_front();
            if (!steps.empty()) {
                ask();
            }
        }
    }

    bool isAnswered() const {
        void* answer = nullptr;
        xcb_generic_error_t* error = nullptr;
        const int isThere = xcb_poll_for_reply(connection.get(), question, &answer, &error);
        xcbOwned(answer);
        xcbOwned(error);
        return isThere != 0;
    }

    X11Connection connection;
    xcb_atom_t selection = XCB_ATOM_NONE;
    int firstEvent = 0;  ///< Of the extension; 0 where the server does not have it.
    bool isCompositing = false;
    Observer observer;
    std::deque<std::function<void()>> steps;  ///< The first one's question is under way.
    bool isInStep = false;
    unsigned int question = 0;  ///< The number of the request.
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

void X11Compositor::whenAnswered(std::function<void()> step) {
    if (parts_->connection.isOpen()) {
        parts_->add(std::move(step));
        parts_->pump.keepEarlyEvents();
    } else {
        step();
    }
}

void X11Compositor::observe(Observer observer) {
    parts_->observer = std::move(observer);
}

}  // namespace velmora
