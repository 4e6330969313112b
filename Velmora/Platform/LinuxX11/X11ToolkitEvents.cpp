// SPDX-License-Identifier: MIT
#include "Velmora/Platform/LinuxX11/X11ToolkitEvents.h"

#include <xcb/xcbext.h>

#include <QGuiApplication>
#include <array>
#include <cstring>
#include <optional>
#include <utility>

namespace velmora {
namespace {

/// Set in events that other clients have made, a window manager say.
constexpr std::uint8_t sentByClients = 0x80;

constexpr std::uint32_t iconicState = 3;  // Of WM_STATE.

/// An answer that has arrived; empty where it was an error, as for a window that is gone.
template <typename Reply>
struct Answer {
    XcbOwned<Reply> reply;
};

/// Nothing as long as the answer has not arrived.
template <typename Reply>
std::optional<Answer<Reply>> answerTo(const X11Connection& connection, unsigned int request) {
    void* reply = nullptr;
    xcb_generic_error_t* error = nullptr;
    if (xcb_poll_for_reply(connection.get(), request, &reply, &error) == 0) {
        return std::nullopt;
    }
    xcbOwned(error);
    return Answer<Reply>{xcbOwned(static_cast<Reply*>(reply))};
}

}  // namespace

X11ToolkitEvents::X11ToolkitEvents()
    : pump_(
          connection_, [](const xcb_generic_event_t&) {}, [this] { takeAnswers(); }) {
    if (connection_.isOpen()) {
        connection_.learnAtoms({"_NET_WM_STATE", "WM_STATE"});
        netWmState_ = connection_.atom("_NET_WM_STATE");
        wmState_ = connection_.atom("WM_STATE");
        qGuiApp->installNativeEventFilter(this);
    }
}

X11ToolkitEvents::~X11ToolkitEvents() {
    if (qGuiApp != nullptr) {
        qGuiApp->removeNativeEventFilter(this);
    }
}

bool X11ToolkitEvents::nativeEventFilter(const QByteArray& type, void* message,
                                         qintptr* /*result*/) {
    if (type != "xcb_generic_event_t") {
        return false;
    }
    auto* const event = static_cast<xcb_generic_event_t*>(message);
    switch (event->response_type) {  // What a client has sent has other numbers.
        case XCB_CONFIGURE_NOTIFY:
            return configured(*reinterpret_cast<xcb_configure_notify_event_t*>(event));
        case XCB_PROPERTY_NOTIFY:
            return propertyChanged(*reinterpret_cast<xcb_property_notify_event_t*>(event));
        case XCB_DESTROY_NOTIFY:
            putAway_.erase(reinterpret_cast<xcb_destroy_notify_event_t*>(event)->window);
            return false;
        default:
            return false;
    }
}

/// The server gives a window's place within its parent, a window manager one on the screen. The
/// toolkit asks for the place unless the event comes from a window manager.
bool X11ToolkitEvents::configured(xcb_configure_notify_event_t& event) {
    if (event.override_redirect != 0) {
        // Its parent is the root window.
        event.response_type |= sentByClients;
        return false;
    }
    const unsigned int request =
        xcb_translate_coordinates(connection_.get(), event.window, connection_.root(), 0, 0)
            .sequence;
    ask(PlaceQuestion{event, request});
    return true;
}

/// Of a window's states the toolkit needs to know only whether it is put away: no window of ours is
/// ever maximised or full screen.
bool X11ToolkitEvents::propertyChanged(const xcb_property_notify_event_t& event) {
    if (event.atom == wmState_) {
        const unsigned int request =
            xcb_get_property(connection_.get(), 0, event.window, wmState_, XCB_ATOM_ANY, 0, 1)
                .sequence;
        ask(StateQuestion{event, request});
        return true;
    }
    return event.atom == netWmState_;
}

void X11ToolkitEvents::ask(Question question) {
    questions_.push_back(question);
    xcb_flush(connection_.get());
    pump_.keepEarlyEvents();
}

void X11ToolkitEvents::takeAnswers() {
    const auto take = [this]<typename Reply>(const auto& question, const Reply*) {
        const auto answer = answerTo<Reply>(connection_, question.request);
        if (answer && answer->reply) {
            tell(question, *answer->reply);
        }
        return answer.has_value();
    };
    const auto takeFirst = [&] {
        const Question question = questions_.front();
        const auto* const place = std::get_if<PlaceQuestion>(&question);
        return place != nullptr
                   ? take(*place, static_cast<xcb_translate_coordinates_reply_t*>(nullptr))
                   : take(std::get<StateQuestion>(question),
                          static_cast<xcb_get_property_reply_t*>(nullptr));
    };
    while (!questions_.empty() && takeFirst()) {
        questions_.pop_front();
    }
}

void X11ToolkitEvents::tell(const PlaceQuestion& question,
                            const xcb_translate_coordinates_reply_t& answer) {
    xcb_configure_notify_event_t event = question.event;
    event.x = answer.dst_x;
    event.y = answer.dst_y;
    send(event);
}

/// The toolkit asks for the state again, at a time at which somebody has put the window away or
/// fetched it back.
void X11ToolkitEvents::tell(const StateQuestion& question, const xcb_get_property_reply_t& answer) {
    std::uint32_t state = 0;
    if (answer.format == 32 && answer.value_len > 0) {
        std::memcpy(&state, xcb_get_property_value(&answer), sizeof state);
    }
    const bool isPutAway = state == iconicState;
    if (isPutAway != putAway_.contains(question.event.window)) {
        if (isPutAway) {
            putAway_.insert(question.event.window);
        } else {
            putAway_.erase(question.event.window);
        }
        send(question.event);
    }
}

/// Without a mask an event goes to the client that has made the window: the toolkit.
template <typename Event>
void X11ToolkitEvents::send(const Event& event) {
    std::array<char, 32> bytes{};
    static_assert(sizeof(Event) <= sizeof bytes);
    std::memcpy(bytes.data(), &event, sizeof event);
    xcb_send_event(connection_.get(), 0, event.window, XCB_EVENT_MASK_NO_EVENT, bytes.data());
    xcb_flush(connection_.get());
}

}  // namespace velmora
