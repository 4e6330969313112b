// SPDX-License-Identifier: MIT
#pragma once

#include <QAbstractNativeEventFilter>
#include <deque>
#include <map>
#include <optional>
#include <set>
#include <variant>
#include <vector>

#include "Velmora/Platform/LinuxX11/X11Connection.h"
#include "Velmora/Platform/LinuxX11/X11EventPump.h"

namespace velmora {

/// Keeps the toolkit from asking the X server while it handles events of the program's windows. It
/// would wait for each answer, and most such events come when a window comes to the screen and the
/// window manager and the compositor keep the server for themselves, for several frames on a busy
/// machine. What the toolkit would ask is asked here without waiting, on a connection of its own,
/// and the event handed on with the answer in it. Main thread; needs its event loop.
class X11ToolkitEvents final : public QAbstractNativeEventFilter {
  public:
    X11ToolkitEvents();
    X11ToolkitEvents(const X11ToolkitEvents&) = delete;
    X11ToolkitEvents& operator=(const X11ToolkitEvents&) = delete;
    ~X11ToolkitEvents() override;

    bool nativeEventFilter(const QByteArray& type, void* message, qintptr* result) override;

  private:
    /// Where a window of this size lies on the screen.
    struct PlaceQuestion {
        xcb_configure_notify_event_t event;
        unsigned int request;
        bool isCheck;  ///< Of a place that the toolkit has been told already.
    };
    /// Whether a window is put away.
    struct StateQuestion {
        xcb_property_notify_event_t event;
        unsigned int request;
    };
    /// Asked a moment after a window has come to the screen: the answer comes when those who take
    /// it in have let the server go.
    struct ArrivalQuestion {
        xcb_window_t window;
        unsigned int request;
    };
    /// What the keys mean, and what the toolkit is to be told where that is new.
    struct LayoutQuestion {
        std::optional<xcb_generic_event_t> event;
        unsigned int request;
    };
    using Question = std::variant<PlaceQuestion, StateQuestion, ArrivalQuestion, LayoutQuestion>;

    void mapped(xcb_window_t window);
    bool keyboardChanged(const xcb_generic_event_t& event);
    bool entered(const xcb_ge_generic_event_t& event);
    bool configured(xcb_configure_notify_event_t& event);
    void told(const xcb_configure_notify_event_t& event);
    void askForPlace(const xcb_configure_notify_event_t& event, bool isCheck);
    bool propertyChanged(const xcb_property_notify_event_t& event);
    void ask(Question question);
    void takeAnswers();
    bool take(const PlaceQuestion& question);
    bool take(const StateQuestion& question);
    bool take(const ArrivalQuestion& question);
    bool take(const LayoutQuestion& question);
    void followKeyboard();
    void askForLayout(std::optional<xcb_generic_event_t> event);
    void enterAgain(xcb_window_t window);
    template <typename Event>
    void send(xcb_window_t window, const Event& event);

    X11Connection connection_;
    xcb_atom_t netWmState_ = XCB_ATOM_NONE;
    xcb_atom_t wmState_ = XCB_ATOM_NONE;
    std::deque<Question> questions_;  ///< In the order in which the answers come.
    std::map<xcb_window_t, xcb_configure_notify_event_t> configured_;  ///< The last of each window.
    std::set<xcb_window_t> putAway_;
    std::map<xcb_window_t, bool> arriving_;  ///< And whether the pointer was found in them.
    std::uint8_t inputOpcode_ = 0;           ///< Of the extension; 0 without it.
    std::uint8_t keyboardEvent_ = 0;         ///< Of the extension; 0 without it.
    std::vector<std::uint8_t> layout_;       ///< Of the keyboard, as the toolkit knows it.
    X11EventPump pump_;
};

}  // namespace velmora
