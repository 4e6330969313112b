// SPDX-License-Identifier: MIT
#include "Velmora/Platform/LinuxX11/X11Connection.h"

#include <cstring>
#include <utility>

namespace velmora {
namespace {

/// Stands in for the screen of a server that cannot be reached.
const xcb_screen_t noScreen{};

const xcb_screen_t* screenOfNumber(xcb_connection_t* connection, int number) {
    auto screens = xcb_setup_roots_iterator(xcb_get_setup(connection));
    for (; screens.rem > 0; xcb_screen_next(&screens), --number) {
        if (number == 0) {
            return screens.data;
        }
    }
    return &noScreen;
}

}  // namespace

X11Connection::X11Connection(const std::string& display)
    : connection_(xcb_connect(display.empty() ? nullptr : display.c_str(), &screenNumber_)),
      screen_(&noScreen) {
    if (xcb_connection_has_error(connection_) == 0) {
        screen_ = screenOfNumber(connection_, screenNumber_);
    }
}

X11Connection::~X11Connection() {
    xcb_disconnect(connection_);
}

bool X11Connection::isOpen() const {
    return screen_ != &noScreen && xcb_connection_has_error(connection_) == 0;
}

bool X11Connection::hasExtension(xcb_extension_t& extension) const {
    if (!isOpen()) {
        return false;
    }
    const xcb_query_extension_reply_t* reply = xcb_get_extension_data(connection_, &extension);
    return reply != nullptr && reply->present != 0;
}

xcb_atom_t X11Connection::atom(const std::string& name) {
    const auto known = atoms_.find(name);
    if (known != atoms_.end()) {
        return known->second;
    }
    return learnAtom(name, askForAtom(name));
}

void X11Connection::learnAtoms(std::initializer_list<const char*> names) {
    std::vector<std::pair<std::string, xcb_intern_atom_cookie_t>> questions;
    for (const char* const name : names) {
        questions.emplace_back(name, askForAtom(name));
    }
    for (const auto& [name, question] : questions) {
        learnAtom(name, question);
    }
}

xcb_intern_atom_cookie_t X11Connection::askForAtom(const std::string& name) {
    return xcb_intern_atom(connection_, 0, static_cast<std::uint16_t>(name.size()), name.c_str());
}

xcb_atom_t X11Connection::learnAtom(const std::string& name, xcb_intern_atom_cookie_t question) {
    const auto reply = xcbOwned(xcb_intern_atom_reply(connection_, question, nullptr));
    if (!reply) {
        return XCB_ATOM_NONE;
    }
    atoms_.emplace(name, reply->atom);
    return reply->atom;
}

xcb_get_property_cookie_t X11Connection::requestProperty(xcb_window_t window, xcb_atom_t name,
                                                         xcb_atom_t type, std::uint32_t limit) {
    return xcb_get_property(connection_, 0, window, name, type, 0, limit);
}

std::vector<std::uint32_t> X11Connection::propertyReply(xcb_get_property_cookie_t cookie) {
    const auto reply = xcbOwned(xcb_get_property_reply(connection_, cookie, nullptr));
    if (!reply || reply->format != 32) {
        return {};
    }
    std::vector<std::uint32_t> values(reply->value_len);
    if (!values.empty()) {
        std::memcpy(values.data(), xcb_get_property_value(reply.get()),
                    values.size() * sizeof(std::uint32_t));
    }
    return values;
}

std::vector<std::uint32_t> X11Connection::property(xcb_window_t window, xcb_atom_t name,
                                                   xcb_atom_t type, std::uint32_t limit) {
    return propertyReply(requestProperty(window, name, type, limit));
}

void X11Connection::discardEvents() {
    while (xcbOwned(xcb_poll_for_event(connection_))) {
    }
}

}  // namespace velmora
