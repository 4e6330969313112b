// SPDX-License-Identifier: MIT
#include "Velmora/Platform/LinuxX11/X11ApplicationShell.h"

#include <xcb/xcb.h>

#include <QEvent>
#include <QGuiApplication>
#include <QPointer>
#include <QWindow>
#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace velmora {
namespace {

constexpr std::uint32_t removeState = 0;  // Of _NET_WM_STATE messages.
constexpr std::uint32_t addState = 1;
constexpr std::uint32_t fromPager = 2;  // The user asked for it: no protection against stealing.
constexpr std::uint32_t stateLimit = 64;

bool isManaged(const QWindow& window) {
    const Qt::WindowType type = window.type();
    const bool isPanel = type == Qt::ToolTip || type == Qt::Popup ||
                         (window.flags() & Qt::BypassWindowManagerHint) != 0;
    return window.isTopLevel() && window.handle() != nullptr && !isPanel;
}

xcb_connection_t* applicationConnection() {
    const auto* native = qGuiApp == nullptr
                             ? nullptr
                             : qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    return native == nullptr ? nullptr : native->connection();
}

}  // namespace

class X11ApplicationShell::Parts : public QObject {
  public:
    Parts() : connection_(applicationConnection()) {
        if (connection_ != nullptr) {
            root_ = xcb_setup_roots_iterator(xcb_get_setup(connection_)).data->root;
            qGuiApp->installEventFilter(this);
        }
    }

    void setPolicy(ActivationPolicy policy);
    void activate();

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    xcb_atom_t atom(const char* name);
    std::vector<xcb_atom_t> hiddenStates();
    void prepare(const QWindow& window);
    void announce(const QWindow& window);
    void send(const QWindow& window, const char* type, std::uint32_t first, std::uint32_t second,
              std::uint32_t third);

    xcb_connection_t* connection_;
    xcb_window_t root_ = XCB_WINDOW_NONE;
    ActivationPolicy policy_ = ActivationPolicy::accessory;
    QPointer<QWindow> lastShown_;
    std::map<std::string, xcb_atom_t> atoms_;
};

xcb_atom_t X11ApplicationShell::Parts::atom(const char* name) {
    const auto known = atoms_.find(name);
    if (known != atoms_.end()) {
        return known->second;
    }
    const auto cookie =
        xcb_intern_atom(connection_, 0, static_cast<std::uint16_t>(std::strlen(name)), name);
    const std::unique_ptr<xcb_intern_atom_reply_t, decltype(&std::free)> reply(
        xcb_intern_atom_reply(connection_, cookie, nullptr), &std::free);
    const xcb_atom_t result = reply ? reply->atom : static_cast<xcb_atom_t>(XCB_ATOM_NONE);
    atoms_.emplace(name, result);
    return result;
}

std::vector<xcb_atom_t> X11ApplicationShell::Parts::hiddenStates() {
    return {atom("_NET_WM_STATE_SKIP_TASKBAR"), atom("_NET_WM_STATE_SKIP_PAGER")};
}

bool X11ApplicationShell::Parts::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Show) {
        auto* window = qobject_cast<QWindow*>(watched);
        if (window != nullptr && isManaged(*window)) {
            lastShown_ = window;
            prepare(*window);
        }
    }
    return false;
}

/// A window that is about to appear carries its states as a property, which window managers take
/// away whenever it disappears.
void X11ApplicationShell::Parts::prepare(const QWindow& window) {
    const auto id = static_cast<xcb_window_t>(window.winId());
    const xcb_atom_t property = atom("_NET_WM_STATE");
    const auto cookie =
        xcb_get_property(connection_, 0, id, property, XCB_ATOM_ATOM, 0, stateLimit);
    const std::unique_ptr<xcb_get_property_reply_t, decltype(&std::free)> reply(
        xcb_get_property_reply(connection_, cookie, nullptr), &std::free);
    std::vector<xcb_atom_t> states;
    if (reply && reply->format == 32) {
        const auto* values = static_cast<xcb_atom_t*>(xcb_get_property_value(reply.get()));
        states.assign(values, values + reply->value_len);
    }
    for (const xcb_atom_t hidden : hiddenStates()) {
        std::erase(states, hidden);
        if (policy_ == ActivationPolicy::accessory) {
            states.push_back(hidden);
        }
    }
    xcb_change_property(connection_, XCB_PROP_MODE_REPLACE, id, property, XCB_ATOM_ATOM, 32,
                        static_cast<std::uint32_t>(states.size()), states.data());
}

/// Of a window that is there, window managers want to be asked.
void X11ApplicationShell::Parts::announce(const QWindow& window) {
    const auto states = hiddenStates();
    send(window, "_NET_WM_STATE", policy_ == ActivationPolicy::accessory ? addState : removeState,
         states[0], states[1]);
}

void X11ApplicationShell::Parts::send(const QWindow& window, const char* type, std::uint32_t first,
                                      std::uint32_t second, std::uint32_t third) {
    xcb_client_message_event_t message{};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = 32;
    message.window = static_cast<xcb_window_t>(window.winId());
    message.type = atom(type);
    message.data.data32[0] = first;
    message.data.data32[1] = second;
    message.data.data32[2] = third;
    xcb_send_event(connection_, 0, root_,
                   XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT,
                   reinterpret_cast<const char*>(&message));
    xcb_flush(connection_);
}

void X11ApplicationShell::Parts::setPolicy(ActivationPolicy policy) {
    policy_ = policy;
    if (connection_ == nullptr) {
        return;
    }
    for (const QWindow* window : QGuiApplication::topLevelWindows()) {
        if (window->isVisible() && isManaged(*window)) {
            announce(*window);
        }
    }
}

void X11ApplicationShell::Parts::activate() {
    if (connection_ == nullptr) {
        return;
    }
    QList<QWindow*> windows = QGuiApplication::topLevelWindows();
    // The one that was shown last comes to lie on top.
    std::stable_partition(windows.begin(), windows.end(),
                          [this](const QWindow* window) { return window != lastShown_; });
    for (const QWindow* window : windows) {
        if (window->isVisible() && isManaged(*window)) {
            send(*window, "_NET_ACTIVE_WINDOW", fromPager, XCB_CURRENT_TIME, XCB_WINDOW_NONE);
        }
    }
}

X11ApplicationShell::X11ApplicationShell() : parts_(std::make_unique<Parts>()) {}

X11ApplicationShell::~X11ApplicationShell() = default;

void X11ApplicationShell::setActivationPolicy(ActivationPolicy policy) {
    parts_->setPolicy(policy);
}

void X11ApplicationShell::activateIgnoringOtherApplications() {
    parts_->activate();
}

void X11ApplicationShell::terminate() {
    QMetaObject::invokeMethod(qGuiApp, &QCoreApplication::quit, Qt::QueuedConnection);
}

}  // namespace velmora
