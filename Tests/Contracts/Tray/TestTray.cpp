// SPDX-License-Identifier: MIT
#include "Tests/Contracts/Tray/TestTray.h"

#include <array>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <stdexcept>

namespace velmora::testing {
namespace {

template <typename Reply>
std::unique_ptr<Reply, decltype(&std::free)> owned(Reply* reply) {
    return {reply, &std::free};
}

xcb_visualid_t visualWithAlpha(const xcb_screen_t& screen) {
    auto depths = xcb_screen_allowed_depths_iterator(&screen);
    for (; depths.rem > 0; xcb_depth_next(&depths)) {
        if (depths.data->depth == 32) {
            return xcb_depth_visuals_iterator(depths.data).data->visual_id;
        }
    }
    throw std::runtime_error("the X server has no visual with an alpha channel");
}

}  // namespace

TestTray::TestTray(const std::string& display, const Options& options)
    : connection_(xcb_connect(display.c_str(), nullptr)),
      screen_(xcb_setup_roots_iterator(xcb_get_setup(connection_)).data),
      window_(xcb_generate_id(connection_)) {
    const std::array<std::uint32_t, 3> values{options.background, 1,
                                              XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY};
    xcb_create_window(connection_, XCB_COPY_FROM_PARENT, window_, screen_->root, left,
                      static_cast<std::int16_t>(options.top), 5 * side, side, 0,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT,
                      XCB_CW_BACK_PIXEL | XCB_CW_OVERRIDE_REDIRECT | XCB_CW_EVENT_MASK,
                      values.data());
    if (options.translucent) {
        const xcb_visualid_t visual = visualWithAlpha(*screen_);
        xcb_change_property(connection_, XCB_PROP_MODE_REPLACE, window_,
                            atom("_NET_SYSTEM_TRAY_VISUAL"), XCB_ATOM_VISUALID, 32, 1, &visual);
    }
    xcb_map_window(connection_, window_);
    const xcb_atom_t selection = atom("_NET_SYSTEM_TRAY_S0");
    xcb_set_selection_owner(connection_, window_, selection, XCB_CURRENT_TIME);
    xcb_client_message_event_t message{};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = 32;
    message.window = screen_->root;
    message.type = atom("MANAGER");
    message.data.data32[1] = selection;
    message.data.data32[2] = window_;
    xcb_send_event(connection_, 0, screen_->root, XCB_EVENT_MASK_STRUCTURE_NOTIFY,
                   reinterpret_cast<const char*>(&message));
    xcb_flush(connection_);
}

TestTray::~TestTray() {
    xcb_disconnect(connection_);
}

xcb_atom_t TestTray::atom(const std::string& name) {
    const auto cookie =
        xcb_intern_atom(connection_, 0, static_cast<std::uint16_t>(name.size()), name.c_str());
    return owned(xcb_intern_atom_reply(connection_, cookie, nullptr))->atom;
}

void TestTray::handleEvents() {
    while (const auto event = owned(xcb_poll_for_event(connection_))) {
        const int type = event->response_type & 0x7F;
        if (type == XCB_CLIENT_MESSAGE) {
            const auto& message = reinterpret_cast<xcb_client_message_event_t&>(*event);
            if (message.type == atom("_NET_SYSTEM_TRAY_OPCODE") && message.data.data32[1] == 0) {
                embed(message.data.data32[2]);
            }
        } else if (type == XCB_DESTROY_NOTIFY &&
                   reinterpret_cast<xcb_destroy_notify_event_t&>(*event).window == icon_) {
            icon_ = XCB_WINDOW_NONE;
        }
    }
}

void TestTray::embed(xcb_window_t window) {
    // What it embeds lives on without it.
    xcb_change_save_set(connection_, XCB_SET_MODE_INSERT, window);
    xcb_reparent_window(connection_, window, window_, 0, 0);
    const std::array<std::uint32_t, 2> size{side, side};
    xcb_configure_window(connection_, window, XCB_CONFIG_WINDOW_WIDTH | XCB_CONFIG_WINDOW_HEIGHT,
                         size.data());
    xcb_map_window(connection_, window);
    // It is done once the server answers.
    owned(xcb_get_input_focus_reply(connection_, xcb_get_input_focus(connection_), nullptr));
    icon_ = window;
}

xcb_window_t TestTray::icon() {
    handleEvents();
    return icon_;
}

std::string TestTray::iconText(const char* property) {
    const auto reply = owned(xcb_get_property_reply(
        connection_,
        xcb_get_property(connection_, 0, icon(), atom(property), XCB_GET_PROPERTY_TYPE_ANY, 0, 64),
        nullptr));
    return reply ? std::string(static_cast<const char*>(xcb_get_property_value(reply.get())),
                               static_cast<std::size_t>(xcb_get_property_value_length(reply.get())))
                 : std::string();
}

std::uint32_t TestTray::pixel(int x, int y) {
    handleEvents();
    const auto reply = owned(xcb_get_image_reply(
        connection_,
        xcb_get_image(connection_, XCB_IMAGE_FORMAT_Z_PIXMAP, screen_->root,
                      static_cast<std::int16_t>(x), static_cast<std::int16_t>(y), 1, 1, ~0U),
        nullptr));
    std::uint32_t value = 0;
    if (reply) {
        std::memcpy(&value, xcb_get_image_data(reply.get()), sizeof value);
    }
    return value & 0xFFFFFFU;
}

}  // namespace velmora::testing
