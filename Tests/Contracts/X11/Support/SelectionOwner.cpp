// SPDX-License-Identifier: MIT
#include "Tests/Contracts/X11/Support/SelectionOwner.h"

#include <xcb/xcb.h>

#include <cstdint>
#include <cstdlib>
#include <memory>
#include <utility>

namespace velmora::test {

namespace {

struct Free {
    void operator()(void* memory) const { std::free(memory); }
};

}  // namespace

SelectionOwner::SelectionOwner(const std::string& display, std::string text, Manner manner)
    : text_(std::move(text)),
      manner_(manner),
      connection_(xcb_connect(display.c_str(), nullptr)),
      window_(xcb_generate_id(connection_)),
      farewell_(atom("VELMORA_TEST_FAREWELL")) {
    const xcb_screen_t* const screen = xcb_setup_roots_iterator(xcb_get_setup(connection_)).data;
    xcb_create_window(connection_, XCB_COPY_FROM_PARENT, window_, screen->root, 0, 0, 1, 1, 0,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, 0, nullptr);
    xcb_set_selection_owner(connection_, window_, XCB_ATOM_PRIMARY, XCB_CURRENT_TIME);
    atom("VELMORA_TEST_FAREWELL");  // A reply: the server knows of the owner by now.
    thread_ = std::thread([this] { serve(); });
}

SelectionOwner::~SelectionOwner() {
    xcb_client_message_event_t message{};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = 32;
    message.window = window_;
    message.type = farewell_;
    xcb_send_event(connection_, 0, window_, 0, reinterpret_cast<const char*>(&message));
    xcb_flush(connection_);
    thread_.join();
    xcb_disconnect(connection_);
}

std::uint32_t SelectionOwner::atom(const std::string& name) const {
    const auto cookie =
        xcb_intern_atom(connection_, 0, static_cast<std::uint16_t>(name.size()), name.c_str());
    const std::unique_ptr<xcb_intern_atom_reply_t, Free> reply(
        xcb_intern_atom_reply(connection_, cookie, nullptr));
    return reply ? reply->atom : xcb_atom_t{XCB_ATOM_NONE};
}

void SelectionOwner::serve() {
    const std::uint32_t utf8 = atom("UTF8_STRING");
    while (
        const std::unique_ptr<xcb_generic_event_t, Free> event{xcb_wait_for_event(connection_)}) {
        const int type = event->response_type & 0x7F;
        if (type == XCB_CLIENT_MESSAGE) {
            return;
        }
        if (type != XCB_SELECTION_REQUEST) {
            continue;
        }
        const auto* const request =
            reinterpret_cast<const xcb_selection_request_event_t*>(event.get());
        ++questions_;
        const Manner manner = manner_;
        if (manner == Manner::silent) {
            continue;
        }
        xcb_selection_notify_event_t notice{};
        notice.response_type = XCB_SELECTION_NOTIFY;
        notice.requestor = request->requestor;
        notice.selection = request->selection;
        notice.target = request->target;
        if (manner != Manner::gruff) {
            notice.property = request->property;
            xcb_change_property(connection_, XCB_PROP_MODE_REPLACE, request->requestor,
                                request->property,
                                manner == Manner::gives ? utf8 : xcb_atom_t{XCB_ATOM_INTEGER}, 8,
                                static_cast<std::uint32_t>(text_.size()), text_.data());
        }
        xcb_send_event(connection_, 0, request->requestor, 0,
                       reinterpret_cast<const char*>(&notice));
        xcb_flush(connection_);
    }
}

}  // namespace velmora::test
