// SPDX-License-Identifier: MIT
#include "Velmora/Platform/LinuxX11/X11ClientWindow.h"

#include <cmath>
#include <cstdint>
#include <vector>

namespace velmora {
namespace {

constexpr int levelLimit = 4;
constexpr std::size_t windowLimit = 64;
constexpr int ancestorLimit = 32;

/// One window that may be the client, and whether the point lies in it.
struct Candidate {
    xcb_window_t id;
    bool isManaged;
    bool isViewable;
    bool holdsPoint;
};

struct Asked {
    xcb_window_t id;
    xcb_get_property_cookie_t state;
    xcb_get_window_attributes_cookie_t attributes;
    xcb_get_geometry_cookie_t geometry;
    xcb_translate_coordinates_cookie_t corner;
};

std::vector<xcb_window_t> childrenOf(X11Connection& connection,
                                     const std::vector<xcb_window_t>& parents) {
    xcb_connection_t* const c = connection.get();
    std::vector<xcb_query_tree_cookie_t> cookies;
    cookies.reserve(parents.size());
    for (const xcb_window_t parent : parents) {
        cookies.push_back(xcb_query_tree(c, parent));
    }
    std::vector<xcb_window_t> children;
    for (const auto cookie : cookies) {
        const auto tree = xcbOwned(xcb_query_tree_reply(c, cookie, nullptr));
        if (!tree) {
            continue;
        }
        const xcb_window_t* list = xcb_query_tree_children(tree.get());
        // The topmost child first.
        for (int i = xcb_query_tree_children_length(tree.get()) - 1;
             i >= 0 && children.size() < windowLimit; --i) {
            children.push_back(list[i]);
        }
    }
    return children;
}

Candidate answered(X11Connection& connection, const Asked& asked, Point point) {
    xcb_connection_t* const c = connection.get();
    const auto state = xcbOwned(xcb_get_property_reply(c, asked.state, nullptr));
    const auto attributes = xcbOwned(xcb_get_window_attributes_reply(c, asked.attributes, nullptr));
    const auto geometry = xcbOwned(xcb_get_geometry_reply(c, asked.geometry, nullptr));
    const auto corner = xcbOwned(xcb_translate_coordinates_reply(c, asked.corner, nullptr));
    if (!state || !attributes || !geometry || !corner) {
        return {asked.id, false, false, false};
    }
    const Rect area = {static_cast<double>(corner->dst_x), static_cast<double>(corner->dst_y),
                       static_cast<double>(geometry->width), static_cast<double>(geometry->height)};
    return {asked.id, state->type != XCB_ATOM_NONE, attributes->map_state == XCB_MAP_STATE_VIEWABLE,
            area.contains(point)};
}

std::vector<Candidate> candidates(X11Connection& connection,
                                  const std::vector<xcb_window_t>& windows, Point point) {
    xcb_connection_t* const c = connection.get();
    const xcb_atom_t wmState = connection.atom("WM_STATE");
    std::vector<Asked> asked;
    asked.reserve(windows.size());
    for (const xcb_window_t id : windows) {
        asked.push_back({id, xcb_get_property(c, 0, id, wmState, XCB_GET_PROPERTY_TYPE_ANY, 0, 0),
                         xcb_get_window_attributes(c, id), xcb_get_geometry(c, id),
                         xcb_translate_coordinates(c, id, connection.root(), 0, 0)});
    }
    std::vector<Candidate> result;
    result.reserve(asked.size());
    for (const Asked& one : asked) {
        result.push_back(answered(connection, one, point));
    }
    return result;
}

xcb_window_t bestOf(const std::vector<Candidate>& list) {
    xcb_window_t any = XCB_WINDOW_NONE;
    for (const Candidate& candidate : list) {
        if (!candidate.isManaged || !candidate.isViewable) {
            continue;
        }
        if (candidate.holdsPoint) {
            return candidate.id;
        }
        if (any == XCB_WINDOW_NONE) {
            any = candidate.id;
        }
    }
    return any;
}

bool isManaged(X11Connection& connection, xcb_get_property_cookie_t state) {
    const auto reply = xcbOwned(xcb_get_property_reply(connection.get(), state, nullptr));
    return reply && reply->type != XCB_ATOM_NONE;
}

/// The usual case in two round trips: the top level itself, or its uppermost child at the point.
xcb_window_t directClient(X11Connection& connection, xcb_window_t topLevel, Point point) {
    xcb_connection_t* const c = connection.get();
    const xcb_atom_t wmState = connection.atom("WM_STATE");
    const auto stateOf = [&](xcb_window_t window) {
        return xcb_get_property(c, 0, window, wmState, XCB_GET_PROPERTY_TYPE_ANY, 0, 0);
    };
    const auto state = stateOf(topLevel);
    const auto below = xcb_translate_coordinates(c, connection.root(), topLevel,
                                                 static_cast<std::int16_t>(std::floor(point.x)),
                                                 static_cast<std::int16_t>(std::floor(point.y)));
    const bool isItself = isManaged(connection, state);
    const auto reply = xcbOwned(xcb_translate_coordinates_reply(c, below, nullptr));
    if (isItself) {
        return topLevel;
    }
    if (!reply || reply->child == XCB_WINDOW_NONE ||
        !isManaged(connection, stateOf(reply->child))) {
        return XCB_WINDOW_NONE;
    }
    return reply->child;
}

}  // namespace

xcb_window_t x11ClientWindow(X11Connection& connection, xcb_window_t topLevel, Point nativePoint) {
    const xcb_window_t direct = directClient(connection, topLevel, nativePoint);
    if (direct != XCB_WINDOW_NONE) {
        return direct;
    }
    std::vector<xcb_window_t> level = {topLevel};
    for (int depth = 0; depth <= levelLimit && !level.empty(); ++depth) {
        const xcb_window_t found = bestOf(candidates(connection, level, nativePoint));
        if (found != XCB_WINDOW_NONE) {
            return found;
        }
        level = childrenOf(connection, level);
    }
    return topLevel;
}

xcb_window_t x11TopLevelOf(X11Connection& connection, xcb_window_t window) {
    xcb_connection_t* const c = connection.get();
    for (int step = 0; step < ancestorLimit; ++step) {
        const auto tree = xcbOwned(xcb_query_tree_reply(c, xcb_query_tree(c, window), nullptr));
        if (!tree || tree->parent == XCB_WINDOW_NONE) {
            return XCB_WINDOW_NONE;
        }
        if (tree->parent == connection.root()) {
            return window;
        }
        window = tree->parent;
    }
    return XCB_WINDOW_NONE;
}

}  // namespace velmora
