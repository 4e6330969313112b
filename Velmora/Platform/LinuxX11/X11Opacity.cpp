// SPDX-License-Identifier: MIT
#include "Velmora/Platform/LinuxX11/X11Opacity.h"

#include <string>

namespace velmora {

X11Opacity::X11Opacity(X11Connection& connection) : connection_(connection) {
    if (connection_.isOpen()) {
        selection_ = connection_.atom("_NET_WM_CM_S" + std::to_string(connection_.screenNumber()));
        property_ = connection_.atom("_NET_WM_WINDOW_OPACITY");
    }
}

bool X11Opacity::isCompositing() {
    xcb_connection_t* const c = connection_.get();
    const auto reply =
        xcbOwned(xcb_get_selection_owner_reply(c, xcb_get_selection_owner(c, selection_), nullptr));
    return reply && reply->owner != XCB_WINDOW_NONE;
}

xcb_get_property_cookie_t X11Opacity::ask(xcb_window_t topLevel) {
    return connection_.requestProperty(topLevel, property_, XCB_ATOM_CARDINAL, 1);
}

std::uint32_t X11Opacity::answer(xcb_get_property_cookie_t asked) {
    const auto value = connection_.propertyReply(asked);
    return value.empty() ? opaque : value.front();
}

bool X11Opacity::isInvisible(xcb_window_t topLevel) {
    return answer(ask(topLevel)) == 0 && isCompositing();
}

}  // namespace velmora
