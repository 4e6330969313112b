// SPDX-License-Identifier: MIT
#pragma once

#include <QAbstractNativeEventFilter>
#include <deque>
#include <set>
#include <variant>

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
    };
    /// Whether a window is put away.
    struct StateQuestion {
        xcb_property_notify_event_t event;
        unsigned int request;
    };
    using Question = std::variant<PlaceQuestion, StateQuestion>;

    bool configured(xcb_configure_notify_event_t& event);
    bool propertyChanged(const xcb_property_notify_event_t& event);
    void ask(Question question);
    void takeAnswers();
    void tell(const PlaceQuestion& question, const xcb_translate_coordinates_reply_t& answer);
    void tell(const StateQuestion& question, const xcb_get_property_reply_t& answer);
    template <typename Event>
    void send(const Event& event);

    X11Connection connection_;
    xcb_atom_t netWmState_ = XCB_ATOM_NONE;
    xcb_atom_t wmState_ = XCB_ATOM_NONE;
    std::deque<Question> questions_;  ///< In the order in which the answers come.
    std::set<xcb_window_t> putAway_;
    X11EventPump pump_;
};

}  // namespace velmora
