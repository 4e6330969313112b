// SPDX-License-Identifier: MIT
#include "Velmora/Platform/LinuxX11/X11ToolkitEvents.h"

#include <xcb/shape.h>
#include <xcb/xcbext.h>
#include <xcb/xinput.h>

#include <QGuiApplication>
#include <QTimer>
#include <QWindow>
#include <algorithm>
#include <array>
#include <chrono>
#include <cstring>
#include <optional>
#include <utility>

#include "Velmora/Platform/LinuxX11/XkbProtocol.h"

namespace velmora {
namespace {

/// Set in events that other clients have made, a window manager say.
constexpr std::uint8_t sentByClients = 0x80;

constexpr std::uint32_t iconicState = 3;  // Of WM_STATE.

/// Half a frame: by then those who take a new window in have begun.
constexpr std::chrono::milliseconds arrivalTime{8};

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

/// Nobody else says that a window lies above itself, and the toolkit does not look at that.
void markAsOurs(xcb_configure_notify_event_t& event) {
    event.above_sibling = event.window;
}

bool isOurs(const xcb_configure_notify_event_t& event) {
    return event.above_sibling == event.window;
}

/// What is sent to any of the toolkit's windows reaches the toolkit.
xcb_window_t anyWindow() {
    for (const QWindow* const window : QGuiApplication::topLevelWindows()) {
        if (window->handle() != nullptr) {
            return static_cast<xcb_window_t>(window->winId());
        }
    }
    return XCB_WINDOW_NONE;
}

}  // namespace

X11ToolkitEvents::X11ToolkitEvents()
    : pump_(
          connection_, [](const xcb_generic_event_t&) {}, [this] { takeAnswers(); }) {
    if (connection_.isOpen()) {
        connection_.learnAtoms({"_NET_WM_STATE", "WM_STATE"});
        netWmState_ = connection_.atom("_NET_WM_STATE");
        wmState_ = connection_.atom("WM_STATE");
        if (connection_.hasExtension(xcb_input_id)) {
            inputOpcode_ = xcb_get_extension_data(connection_.get(), &xcb_input_id)->major_opcode;
        }
        if (connection_.hasExtension(xcb_xkb_id)) {
            followKeyboard();
        }
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
        case XCB_CONFIGURE_NOTIFY | sentByClients:
            told(*reinterpret_cast<xcb_configure_notify_event_t*>(event));
            return false;
        case XCB_PROPERTY_NOTIFY:
            return propertyChanged(*reinterpret_cast<xcb_property_notify_event_t*>(event));
        case XCB_GE_GENERIC:
            return entered(*reinterpret_cast<xcb_ge_generic_event_t*>(event));
        case XCB_MAP_NOTIFY:
            mapped(reinterpret_cast<xcb_map_notify_event_t*>(event)->window);
            return false;
        case XCB_UNMAP_NOTIFY:
            arriving_.erase(reinterpret_cast<xcb_unmap_notify_event_t*>(event)->window);
            return false;
        case XCB_DESTROY_NOTIFY:
            configured_.erase(reinterpret_cast<xcb_destroy_notify_event_t*>(event)->window);
            putAway_.erase(reinterpret_cast<xcb_destroy_notify_event_t*>(event)->window);
            return false;
        default:
            return keyboardChanged(*event);
    }
}

void X11ToolkitEvents::followKeyboard() {
    xcb_connection_t* const c = connection_.get();
    keyboardEvent_ = xcb_get_extension_data(c, &xcb_xkb_id)->first_event;
    xcb_discard_reply(c, xcb_xkb_use_extension(c, 1, 0).sequence);
    askForLayout(std::nullopt);
}

void X11ToolkitEvents::askForLayout(std::optional<xcb_generic_event_t> event) {
    constexpr std::uint16_t parts = XCB_XKB_MAP_PART_KEY_TYPES | XCB_XKB_MAP_PART_KEY_SYMS |
                                    XCB_XKB_MAP_PART_MODIFIER_MAP | XCB_XKB_MAP_PART_VIRTUAL_MODS |
                                    XCB_XKB_MAP_PART_VIRTUAL_MOD_MAP;
    ask(LayoutQuestion{event, xcb_xkb_get_map(connection_.get(), XCB_XKB_ID_USE_CORE_KBD, parts, 0,
                                              0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0)
                                  .sequence});
}

/// The toolkit reads all of the keyboard's layout anew, in some twenty questions, whenever somebody
/// types on another keyboard than before. It hears of that only where the layout is another one.
bool X11ToolkitEvents::keyboardChanged(const xcb_generic_event_t& event) {
    const std::uint8_t kind = event.pad0;
    if (keyboardEvent_ == 0 || event.response_type != keyboardEvent_ ||
        (kind != XCB_XKB_NEW_KEYBOARD_NOTIFY && kind != XCB_XKB_MAP_NOTIFY) ||
        anyWindow() == XCB_WINDOW_NONE) {
        return false;
    }
    xcb_generic_event_t told = event;
    if (kind == XCB_XKB_NEW_KEYBOARD_NOTIFY) {
        // It is told of one change only, and reads nothing anew where this says less.
        reinterpret_cast<xcb_xkb_new_keyboard_notify_event_t&>(told).changed |=
            XCB_XKB_NKN_DETAIL_KEYCODES;
    }
    askForLayout(told);
    return true;
}

void X11ToolkitEvents::mapped(xcb_window_t window) {
    arriving_[window] = false;
    QTimer::singleShot(arrivalTime, Qt::PreciseTimer, &pump_, [this, window] {
        ask(ArrivalQuestion{window, xcb_get_input_focus(connection_.get()).sequence});
    });
}

/// For a pointer that enters, the toolkit asks how far every wheel has been turned meanwhile. Where
/// it only finds itself in a window that has just come, that can wait a little.
bool X11ToolkitEvents::entered(const xcb_ge_generic_event_t& event) {
    if (event.extension != inputOpcode_ || event.event_type != XCB_INPUT_ENTER) {
        return false;
    }
    const auto arriving =
        arriving_.find(reinterpret_cast<const xcb_input_enter_event_t&>(event).event);
    if (arriving == arriving_.end()) {
        return false;
    }
    arriving->second = true;
    return true;
}

/// The server gives a window's place within its parent, a window manager one on the screen. The
/// toolkit asks for the place unless the event comes from a window manager.
bool X11ToolkitEvents::configured(xcb_configure_notify_event_t& event) {
    if (event.override_redirect != 0) {
        // Its parent is the root window.
        event.response_type |= sentByClients;
        return false;
    }
    configured_[event.window] = event;
    askForPlace(event, false);
    return true;
}

/// What a window manager tells between an answer and the event that carries it is newer, but
/// reaches the toolkit before, or not at all, since that takes only the last of several in a row.
/// So the place is asked for once more when the event is there.
void X11ToolkitEvents::told(const xcb_configure_notify_event_t& event) {
    const auto last = configured_.find(event.window);
    if (isOurs(event) && last != configured_.end()) {
        xcb_configure_notify_event_t check = last->second;
        check.x = event.x;
        check.y = event.y;
        askForPlace(check, true);
    }
}

void X11ToolkitEvents::askForPlace(const xcb_configure_notify_event_t& event, bool isCheck) {
    const unsigned int request =
        xcb_translate_coordinates(connection_.get(), event.window, connection_.root(), 0, 0)
            .sequence;
    ask(PlaceQuestion{event, request, isCheck});
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
    const auto takeFirst = [this] {
        const Question question = questions_.front();
        return std::visit([this](const auto& each) { return take(each); }, question);
    };
    while (!questions_.empty() && takeFirst()) {
        questions_.pop_front();
    }
}

bool X11ToolkitEvents::take(const PlaceQuestion& question) {
    const auto answer = answerTo<xcb_translate_coordinates_reply_t>(connection_, question.request);
    if (!answer || !answer->reply) {
        return answer.has_value();
    }
    xcb_configure_notify_event_t event = question.event;
    event.x = answer->reply->dst_x;
    event.y = answer->reply->dst_y;
    if (!question.isCheck || event.x != question.event.x || event.y != question.event.y) {
        markAsOurs(event);
        send(event.window, event);
    }
    return true;
}

/// The toolkit asks for the state again, at a time at which somebody has put the window away or
/// fetched it back.
bool X11ToolkitEvents::take(const StateQuestion& question) {
    const auto answer = answerTo<xcb_get_property_reply_t>(connection_, question.request);
    if (!answer || !answer->reply) {
        return answer.has_value();
    }
    std::uint32_t state = 0;
    if (answer->reply->format == 32 && answer->reply->value_len > 0) {
        std::memcpy(&state, xcb_get_property_value(answer->reply.get()), sizeof state);
    }
    const xcb_window_t window = question.event.window;
    const bool isPutAway = state == iconicState;
    if (isPutAway != putAway_.contains(window)) {
        if (isPutAway) {
            putAway_.insert(window);
        } else {
            putAway_.erase(window);
        }
        send(window, question.event);
    }
    return true;
}

bool X11ToolkitEvents::take(const ArrivalQuestion& question) {
    const auto answer = answerTo<xcb_get_input_focus_reply_t>(connection_, question.request);
    if (!answer) {
        return false;
    }
    const auto arriving = arriving_.find(question.window);
    if (arriving != arriving_.end()) {
        const bool isPointerIn = arriving->second;
        arriving_.erase(arriving);
        if (isPointerIn) {
            enterAgain(question.window);
        }
    }
    return true;
}

bool X11ToolkitEvents::take(const LayoutQuestion& question) {
    const auto answer = answerTo<xcb_xkb_get_map_reply_t>(connection_, question.request);
    if (!answer || !answer->reply) {
        return answer.has_value();
    }
    const auto* const begin = reinterpret_cast<const std::uint8_t*>(answer->reply.get());
    // Behind the head with the request's number; lengths are given in words beyond 32 bytes.
    constexpr std::size_t head = 8;
    constexpr std::size_t leastReply = 32;
    constexpr std::size_t word = 4;
    std::vector<std::uint8_t> layout(begin + head,
                                     begin + leastReply + word * answer->reply->length);
    const xcb_window_t window = anyWindow();
    if (question.event && layout != layout_ && window != XCB_WINDOW_NONE) {
        send(window, *question.event);
    }
    layout_ = std::move(layout);
    return true;
}

/// The server tells of the pointer anew when a window that had no room for it gets it back.
void X11ToolkitEvents::enterAgain(xcb_window_t window) {
    xcb_connection_t* const c = connection_.get();
    xcb_shape_rectangles(c, XCB_SHAPE_SO_SET, XCB_SHAPE_SK_INPUT, XCB_CLIP_ORDERING_UNSORTED,
                         window, 0, 0, 0, nullptr);
    xcb_shape_mask(c, XCB_SHAPE_SO_SET, XCB_SHAPE_SK_INPUT, window, 0, 0, XCB_PIXMAP_NONE);
    xcb_flush(c);
}

/// Without a mask an event goes to the client that has made the window: the toolkit.
template <typename Event>
void X11ToolkitEvents::send(xcb_window_t window, const Event& event) {
    std::array<char, 32> bytes{};
    std::memcpy(bytes.data(), &event, std::min(sizeof event, sizeof bytes));
    xcb_send_event(connection_.get(), 0, window, XCB_EVENT_MASK_NO_EVENT, bytes.data());
    xcb_flush(connection_.get());
}

}  // namespace velmora
