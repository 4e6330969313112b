// SPDX-License-Identifier: MIT
#include "Velmora/Platform/LinuxX11/Tray/TrayIconWindow.h"

#include <unistd.h>

#include <array>
#include <cstdint>
#include <optional>
#include <utility>

#include "Velmora/Platform/LinuxX11/Tray/TrayIconPainter.h"
#include "Velmora/Platform/LinuxX11/X11EventPump.h"

namespace velmora {
namespace {

// Of the protocols that trays and embedding speak.
constexpr std::uint32_t requestDock = 0;
constexpr std::uint32_t embedVersion = 0;
constexpr std::uint32_t embedMapped = 1;

constexpr std::uint16_t firstSide = 22;  // Pixels, until the tray has its say.
constexpr int largestSide = 512;

std::string selectionName(const X11Connection& connection) {
    return "_NET_SYSTEM_TRAY_S" + std::to_string(connection.screenNumber());
}

xcb_window_t ownerOf(X11Connection& connection, xcb_atom_t selection) {
    xcb_connection_t* const c = connection.get();
    const auto reply =
        xcbOwned(xcb_get_selection_owner_reply(c, xcb_get_selection_owner(c, selection), nullptr));
    return reply ? reply->owner : xcb_window_t{XCB_WINDOW_NONE};
}

std::uint8_t depthOf(const xcb_screen_t& screen, xcb_visualid_t visual) {
    auto depths = xcb_screen_allowed_depths_iterator(&screen);
    for (; depths.rem > 0; xcb_depth_next(&depths)) {
        auto visuals = xcb_depth_visuals_iterator(depths.data);
        for (; visuals.rem > 0; xcb_visualtype_next(&visuals)) {
            if (visuals.data->visual_id == visual) {
                return depths.data->depth;
            }
        }
    }
    return 0;
}

}  // namespace

class TrayIconWindow::Parts {
  public:
    Parts(std::vector<StatusIconPixmap> icon, std::string name, Handlers handlers,
          const std::string& display)
        : connection_(display),
          painter_(connection_, std::move(icon)),
          name_(std::move(name)),
          handlers_(std::move(handlers)),
          pump_(
              connection_, [this](const xcb_generic_event_t& event) { handle(event); },
              [this] { finishBatch(); }) {
        if (!connection_.isOpen()) {
            return;
        }
        connection_.learnAtoms({"MANAGER", selectionName(connection_).c_str(), "UTF8_STRING",
                                "_NET_SYSTEM_TRAY_OPCODE", "_NET_SYSTEM_TRAY_VISUAL",
                                "_NET_WM_NAME", "_XEMBED_INFO"});
        // A tray that takes over announces itself to the root window.
        const std::uint32_t structure = XCB_EVENT_MASK_STRUCTURE_NOTIFY;
        xcb_change_window_attributes(connection_.get(), connection_.root(), XCB_CW_EVENT_MASK,
                                     &structure);
        dock();
        pump_.keepEarlyEvents();
    }

  private:
    void handle(const xcb_generic_event_t& event);
    void configured(const xcb_configure_notify_event_t& event);
    void reparented(const xcb_reparent_notify_event_t& event);
    void destroyed(xcb_window_t window);
    void trayLeft();
    void pressed(const xcb_button_press_event_t& event);
    void entered(const xcb_enter_notify_event_t& event);
    void finishBatch();

    void dock();
    void makeWindow(xcb_visualid_t wanted);
    void describeWindow();
    void requestDocking();
    void takeAway();

    X11Connection connection_;
    TrayIconPainter painter_;
    std::string name_;
    Handlers handlers_;
    xcb_window_t tray_ = XCB_WINDOW_NONE;
    xcb_window_t window_ = XCB_WINDOW_NONE;
    xcb_colormap_t colormap_ = XCB_NONE;
    xcb_visualid_t visual_ = 0;
    int width_ = firstSide;
    int height_ = firstSide;
    bool isDirty_ = false;
    bool mayDock_ = false;
    bool isLost_ = false;
    QRect pressedAt_;
    std::optional<QRect> hoveredAt_;  ///< News of the pointer.
    X11EventPump pump_;
};

void TrayIconWindow::Parts::handle(const xcb_generic_event_t& event) {
    const auto as = [&]<typename Event>(const Event*) -> const Event& {
        return reinterpret_cast<const Event&>(event);
    };
    switch (event.response_type & 0x7FU) {
        case XCB_CLIENT_MESSAGE: {
            const auto& message = as(static_cast<xcb_client_message_event_t*>(nullptr));
            mayDock_ |= message.type == connection_.atom("MANAGER") && message.format == 32 &&
                        message.data.data32[1] == connection_.atom(selectionName(connection_));
            break;
        }
        case XCB_EXPOSE:
            isDirty_ = true;
            break;
        case XCB_CONFIGURE_NOTIFY:
            configured(as(static_cast<xcb_configure_notify_event_t*>(nullptr)));
            break;
        case XCB_REPARENT_NOTIFY:
            reparented(as(static_cast<xcb_reparent_notify_event_t*>(nullptr)));
            break;
        case XCB_DESTROY_NOTIFY:
            destroyed(as(static_cast<xcb_destroy_notify_event_t*>(nullptr)).window);
            break;
        case XCB_BUTTON_PRESS:
            pressed(as(static_cast<xcb_button_press_event_t*>(nullptr)));
            break;
        case XCB_ENTER_NOTIFY:
            entered(as(static_cast<xcb_enter_notify_event_t*>(nullptr)));
            break;
        case XCB_LEAVE_NOTIFY:
            hoveredAt_ = QRect();
            break;
        default:
            break;
    }
}

void TrayIconWindow::Parts::configured(const xcb_configure_notify_event_t& event) {
    if (event.window == window_) {
        width_ = std::min<int>(event.width, largestSide);
        height_ = std::min<int>(event.height, largestSide);
        isDirty_ = true;
    }
}

void TrayIconWindow::Parts::reparented(const xcb_reparent_notify_event_t& event) {
    // A tray that goes gives its icons back to the root window, where they would be in the way.
    if (event.window == window_ && event.parent == connection_.root()) {
        trayLeft();
    }
}

void TrayIconWindow::Parts::destroyed(xcb_window_t window) {
    if (window == window_) {
        window_ = XCB_WINDOW_NONE;
        trayLeft();
    } else if (window == tray_) {
        trayLeft();
    }
}

void TrayIconWindow::Parts::trayLeft() {
    takeAway();
    isLost_ = true;
    mayDock_ = true;
}

void TrayIconWindow::Parts::pressed(const xcb_button_press_event_t& event) {
    if (event.event != window_ || event.detail < 1 || event.detail > 3) {
        return;
    }
    pressedAt_ = QRect(event.root_x - event.event_x, event.root_y - event.event_y, width_, height_);
}

void TrayIconWindow::Parts::entered(const xcb_enter_notify_event_t& event) {
    // Where a menu lets the pointer go, it was there before.
    if (event.event == window_ && event.mode == XCB_NOTIFY_MODE_NORMAL) {
        hoveredAt_ =
            QRect(event.root_x - event.event_x, event.root_y - event.event_y, width_, height_);
    }
}

void TrayIconWindow::Parts::finishBatch() {
    if (std::exchange(mayDock_, false)) {
        dock();
    }
    if (std::exchange(isDirty_, false) && window_ != XCB_WINDOW_NONE) {
        painter_.paint(window_, visual_, width_, height_);
    }
    if (const auto icon = std::exchange(hoveredAt_, std::nullopt)) {
        handlers_.hovered(*icon);
    }
    if (!pressedAt_.isNull()) {
        // The press holds the pointer for this connection; the menu wants it for its own. The reply
        // says that it is free.
        xcb_connection_t* const c = connection_.get();
        xcb_ungrab_pointer(c, XCB_CURRENT_TIME);
        xcbOwned(xcb_get_input_focus_reply(c, xcb_get_input_focus(c), nullptr));
        handlers_.pressed(std::exchange(pressedAt_, QRect()));
    }
    if (std::exchange(isLost_, false)) {
        handlers_.lost();
    }
}

void TrayIconWindow::Parts::dock() {
    xcb_connection_t* const c = connection_.get();
    const xcb_atom_t selection = connection_.atom(selectionName(connection_));
    const xcb_window_t owner = ownerOf(connection_, selection);
    if (owner == XCB_WINDOW_NONE || (owner == tray_ && window_ != XCB_WINDOW_NONE)) {
        return;
    }
    takeAway();
    tray_ = owner;
    const std::uint32_t structure = XCB_EVENT_MASK_STRUCTURE_NOTIFY;
    xcb_change_window_attributes(c, tray_, XCB_CW_EVENT_MASK, &structure);
    const auto visual = connection_.property(tray_, connection_.atom("_NET_SYSTEM_TRAY_VISUAL"),
                                             XCB_ATOM_VISUALID, 1);
    // A tray that went before its end could be heard of owns nothing any more.
    if (ownerOf(connection_, selection) != tray_) {
        tray_ = XCB_WINDOW_NONE;
        return;
    }
    makeWindow(visual.empty() ? 0 : visual[0]);
    describeWindow();
    requestDocking();
}

void TrayIconWindow::Parts::makeWindow(xcb_visualid_t wanted) {
    xcb_connection_t* const c = connection_.get();
    const xcb_screen_t& screen = connection_.screen();
    constexpr std::uint32_t events = XCB_EVENT_MASK_EXPOSURE | XCB_EVENT_MASK_STRUCTURE_NOTIFY |
                                     XCB_EVENT_MASK_BUTTON_PRESS | XCB_EVENT_MASK_ENTER_WINDOW |
                                     XCB_EVENT_MASK_LEAVE_WINDOW;
    const bool isTranslucent = depthOf(screen, wanted) == 32;
    visual_ = isTranslucent ? wanted : screen.root_visual;
    width_ = height_ = firstSide;
    window_ = xcb_generate_id(c);
    if (isTranslucent) {
        colormap_ = xcb_generate_id(c);
        xcb_create_colormap(c, XCB_COLORMAP_ALLOC_NONE, colormap_, screen.root, visual_);
        const std::array<std::uint32_t, 4> values{0, 0, events, colormap_};
        xcb_create_window(
            c, 32, window_, screen.root, 0, 0, firstSide, firstSide, 0,
            XCB_WINDOW_CLASS_INPUT_OUTPUT, visual_,
            XCB_CW_BACK_PIXEL | XCB_CW_BORDER_PIXEL | XCB_CW_EVENT_MASK | XCB_CW_COLORMAP,
            values.data());
        return;
    }
    const std::array<std::uint32_t, 2> values{XCB_BACK_PIXMAP_PARENT_RELATIVE, events};
    xcb_create_window(c, screen.root_depth, window_, screen.root, 0, 0, firstSide, firstSide, 0,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT, visual_,
                      XCB_CW_BACK_PIXMAP | XCB_CW_EVENT_MASK, values.data());
}

void TrayIconWindow::Parts::describeWindow() {
    xcb_connection_t* const c = connection_.get();
    const auto set32 = [&](const char* property, xcb_atom_t type,
                           const std::vector<std::uint32_t>& values) {
        xcb_change_property(c, XCB_PROP_MODE_REPLACE, window_, connection_.atom(property), type, 32,
                            static_cast<std::uint32_t>(values.size()), values.data());
    };
    const auto setText = [&](xcb_atom_t property, xcb_atom_t type, const std::string& text) {
        xcb_change_property(c, XCB_PROP_MODE_REPLACE, window_, property, type, 8,
                            static_cast<std::uint32_t>(text.size()), text.data());
    };
    set32("_XEMBED_INFO", connection_.atom("_XEMBED_INFO"), {embedVersion, embedMapped});
    set32("_NET_WM_PID", XCB_ATOM_CARDINAL, {static_cast<std::uint32_t>(::getpid())});
    setText(XCB_ATOM_WM_NAME, XCB_ATOM_STRING, name_);
    setText(connection_.atom("_NET_WM_NAME"), connection_.atom("UTF8_STRING"), name_);
    using namespace std::string_literals;
    setText(XCB_ATOM_WM_CLASS, XCB_ATOM_STRING, "velmora\0com.velmora.Velmora\0"s);
}

void TrayIconWindow::Parts::requestDocking() {
    xcb_client_message_event_t message{};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = 32;
    message.window = tray_;
    message.type = connection_.atom("_NET_SYSTEM_TRAY_OPCODE");
    message.data.data32[0] = XCB_CURRENT_TIME;
    message.data.data32[1] = requestDock;
    message.data.data32[2] = window_;
    xcb_send_event(connection_.get(), 0, tray_, XCB_EVENT_MASK_NO_EVENT,
                   reinterpret_cast<const char*>(&message));
    xcb_flush(connection_.get());
}

void TrayIconWindow::Parts::takeAway() {
    xcb_connection_t* const c = connection_.get();
    if (window_ != XCB_WINDOW_NONE) {
        xcb_destroy_window(c, std::exchange(window_, XCB_WINDOW_NONE));
    }
    if (colormap_ != XCB_NONE) {
        xcb_free_colormap(c, std::exchange(colormap_, XCB_NONE));
    }
    tray_ = XCB_WINDOW_NONE;
    pressedAt_ = QRect();
    hoveredAt_ = QRect();
    xcb_flush(c);
}

TrayIconWindow::TrayIconWindow(std::vector<StatusIconPixmap> icon, const std::string& name,
                               Handlers handlers, const std::string& display)
    : parts_(std::make_unique<Parts>(std::move(icon), name, std::move(handlers), display)) {}

TrayIconWindow::~TrayIconWindow() = default;

bool TrayIconWindow::isTrayThere(const std::string& display) {
    X11Connection connection(display);
    return connection.isOpen() &&
           ownerOf(connection, connection.atom(selectionName(connection))) != XCB_WINDOW_NONE;
}

}  // namespace velmora
