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

#include "Velmora/Platform/LinuxX11/X11ToolkitEvents.h"

namespace velmora {
namespace {

constexpr std::uint32_t removeState = 0;  // Of _NET_WM_STATE messages.
constexpr std::uint32_t addState = 1;
constexpr std::uint32_t fromPager = 2;  // The user asked for it: no protection against stealing.

/// Whether the window manager takes care of a window, or will.
bool isForManager(const QWindow& window) {
    const Qt::WindowType type = window.type();
    const bool isPanel = type == Qt::ToolTip || type == Qt::Popup ||
                         (window.flags() & Qt::BypassWindowManagerHint) != 0;
    return window.isTopLevel() && !isPanel;
}

bool isManaged(const QWindow& window) {
    return window.handle() != nullptr && isForManager(window);
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
            askForAtoms();
            qGuiApp->installEventFilter(this);
            toolkitEvents_ = std::make_unique<X11ToolkitEvents>();
        }
    }

    Parts(const Parts&) = delete;
    Parts& operator=(const Parts&) = delete;
    ~Parts() override {
        for (const auto& [name, question] : questions_) {
            xcb_discard_reply(connection_, question.sequence);
        }
    }

    void setPolicy(ActivationPolicy policy);
    void activate();

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void askForAtoms();
    xcb_atom_t atom(const char* name);
    std::vector<xcb_atom_t> hiddenStates();
    void prepare(const QWindow& window);
    void announce(const QWindow& window);
    void activate(const QWindow& window);
    void send(const QWindow& window, const char* type, std::uint32_t first, std::uint32_t second,
              std::uint32_t third);

    xcb_connection_t* connection_;
    xcb_window_t root_ = XCB_WINDOW_NONE;
    ActivationPolicy policy_ = ActivationPolicy::accessory;
    QPointer<QWindow> lastShown_;
    std::vector<QPointer<QWindow>> toActivate_;  ///< Maybe on their way to the screen.
    std::map<std::string, xcb_intern_atom_cookie_t> questions_;
    std::map<std::string, xcb_atom_t> atoms_;
    std::unique_ptr<X11ToolkitEvents> toolkitEvents_;
};

/// Asks for all atoms at once; the answers are there by the time that one is needed.
void X11ApplicationShell::Parts::askForAtoms() {
    for (const char* const name : {"_NET_WM_STATE", "_NET_WM_STATE_SKIP_TASKBAR",
                                   "_NET_WM_STATE_SKIP_PAGER", "_NET_ACTIVE_WINDOW"}) {
        questions_.emplace(
            name,
            xcb_intern_atom(connection_, 0, static_cast<std::uint16_t>(std::strlen(name)), name));
    }
    xcb_flush(connection_);
}

xcb_atom_t X11ApplicationShell::Parts::atom(const char* name) {
    const auto question = questions_.find(name);
    if (question != questions_.end()) {
        const std::unique_ptr<xcb_intern_atom_reply_t, decltype(&std::free)> reply(
            xcb_intern_atom_reply(connection_, question->second, nullptr), &std::free);
        atoms_.emplace(name, reply ? reply->atom : static_cast<xcb_atom_t>(XCB_ATOM_NONE));
        questions_.erase(question);
    }
    return atoms_.at(name);
}

std::vector<xcb_atom_t> X11ApplicationShell::Parts::hiddenStates() {
    return {atom("_NET_WM_STATE_SKIP_TASKBAR"), atom("_NET_WM_STATE_SKIP_PAGER")};
}

bool X11ApplicationShell::Parts::eventFilter(QObject* watched, QEvent* event) {
    const QEvent::Type type = event->type();
    if (type != QEvent::Show && type != QEvent::Expose) {
        return false;
    }
    auto* window = qobject_cast<QWindow*>(watched);
    if (window == nullptr || !isManaged(*window)) {
        return false;
    }
    if (type == QEvent::Show) {
        lastShown_ = window;
        prepare(*window);
    } else if (window->isExposed()) {
        if (std::erase(toActivate_, window) > 0) {
            activate(*window);
        }
    }
    return false;
}

/// A window that is about to appear carries its states as a property, which window managers take
/// away whenever it disappears. The toolkit adds those that it knows of.
void X11ApplicationShell::Parts::prepare(const QWindow& window) {
    const auto states =
        policy_ == ActivationPolicy::accessory ? hiddenStates() : std::vector<xcb_atom_t>();
    xcb_change_property(connection_, XCB_PROP_MODE_REPLACE,
                        static_cast<xcb_window_t>(window.winId()), atom("_NET_WM_STATE"),
                        XCB_ATOM_ATOM, 32, static_cast<std::uint32_t>(states.size()),
                        states.data());
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
    toActivate_.clear();
    QList<QWindow*> windows = QGuiApplication::topLevelWindows();
    // The one that was shown last comes to lie on top.
    std::stable_partition(windows.begin(), windows.end(),
                          [this](const QWindow* window) { return window != lastShown_; });
    for (QWindow* window : windows) {
        if (!isForManager(*window)) {
            continue;
        }
        if (window->isVisible() && isManaged(*window)) {
            activate(*window);
        } else {
            toActivate_.emplace_back(window);
        }
    }
}

void X11ApplicationShell::Parts::activate(const QWindow& window) {
    send(window, "_NET_ACTIVE_WINDOW", fromPager, XCB_CURRENT_TIME, XCB_WINDOW_NONE);
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
