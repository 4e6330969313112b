// SPDX-License-Identifier: MIT
#include "Velmora/Platform/LinuxX11/X11TopLevels.h"

#include <algorithm>

namespace velmora {
namespace {

constexpr int windowLimit = 4096;

struct Asked {
    xcb_window_t id;
    xcb_get_window_attributes_cookie_t attributes;
    xcb_get_geometry_cookie_t geometry;
};

X11TopLevel described(xcb_window_t id, const xcb_get_window_attributes_reply_t& attributes,
                      const xcb_get_geometry_reply_t& geometry) {
    X11TopLevel window;
    window.id = id;
    window.x = geometry.x;
    window.y = geometry.y;
    window.border = geometry.border_width;
    window.width = geometry.width + 2 * geometry.border_width;
    window.height = geometry.height + 2 * geometry.border_width;
    window.depth = geometry.depth;
    window.visual = attributes.visual;
    window.overrideRedirect = attributes.override_redirect != 0;
    return window;
}

Asked ask(X11Connection& connection, xcb_window_t window) {
    return {window, xcb_get_window_attributes(connection.get(), window),
            xcb_get_geometry(connection.get(), window)};
}

std::optional<X11TopLevel> answered(X11Connection& connection, const Asked& asked) {
    xcb_connection_t* const c = connection.get();
    const auto attributes = xcbOwned(xcb_get_window_attributes_reply(c, asked.attributes, nullptr));
    const auto geometry = xcbOwned(xcb_get_geometry_reply(c, asked.geometry, nullptr));
    if (!attributes || !geometry || attributes->map_state != XCB_MAP_STATE_VIEWABLE ||
        attributes->_class != XCB_WINDOW_CLASS_INPUT_OUTPUT) {
        return std::nullopt;
    }
    return described(asked.id, *attributes, *geometry);
}

}  // namespace

std::optional<X11TopLevel> x11TopLevel(X11Connection& connection, xcb_window_t window) {
    return answered(connection, ask(connection, window));
}

std::vector<X11TopLevel> x11TopLevels(X11Connection& connection) {
    xcb_connection_t* const c = connection.get();
    const auto tree =
        xcbOwned(xcb_query_tree_reply(c, xcb_query_tree(c, connection.root()), nullptr));
    if (!tree) {
        return {};
    }
    const xcb_window_t* children = xcb_query_tree_children(tree.get());
    const int count = xcb_query_tree_children_length(tree.get());
    std::vector<Asked> asked;
    for (int i = std::max(0, count - windowLimit); i < count; ++i) {
        asked.push_back(ask(connection, children[i]));
    }
    std::vector<X11TopLevel> windows;
    for (const Asked& one : asked) {
        if (const auto window = answered(connection, one)) {
            windows.push_back(*window);
        }
    }
    return windows;
}

}  // namespace velmora
