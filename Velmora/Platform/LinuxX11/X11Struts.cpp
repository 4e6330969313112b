// SPDX-License-Identifier: MIT
#include "Velmora/Platform/LinuxX11/X11Struts.h"

#include <algorithm>
#include <array>

namespace velmora {
namespace {

constexpr std::uint32_t windowLimit = 4096;
constexpr double greatestCoordinate = 32767;

/// The four sides as the property counts them, then where along each side it begins and ends.
using StrutValues = std::array<double, 12>;

struct Asked {
    xcb_window_t id;
    xcb_get_property_cookie_t partial;
    xcb_get_property_cookie_t whole;
    xcb_get_property_cookie_t types;
    xcb_get_window_attributes_cookie_t attributes;
    xcb_get_geometry_cookie_t size;
    xcb_translate_coordinates_cookie_t corner;
};

std::vector<xcb_window_t> managedWindows(X11Connection& connection) {
    auto listed = connection.property(connection.root(), connection.atom("_NET_CLIENT_LIST"),
                                      XCB_ATOM_WINDOW, windowLimit);
    if (!listed.empty()) {
        return listed;
    }
    xcb_connection_t* const c = connection.get();
    const auto tree =
        xcbOwned(xcb_query_tree_reply(c, xcb_query_tree(c, connection.root()), nullptr));
    if (!tree) {
        return {};
    }
    const xcb_window_t* children = xcb_query_tree_children(tree.get());
    const auto count = static_cast<std::uint32_t>(xcb_query_tree_children_length(tree.get()));
    return {children, children + std::min(count, windowLimit)};
}

Rect rootArea(X11Connection& connection) {
    xcb_connection_t* const c = connection.get();
    const auto reply =
        xcbOwned(xcb_get_geometry_reply(c, xcb_get_geometry(c, connection.root()), nullptr));
    return reply ? Rect{0, 0, static_cast<double>(reply->width), static_cast<double>(reply->height)}
                 : Rect{};
}

StrutValues strutValues(const std::vector<std::uint32_t>& partial,
                        const std::vector<std::uint32_t>& whole) {
    StrutValues values{};
    const auto bounded = [](std::uint32_t value) {
        return std::min(static_cast<double>(value), greatestCoordinate);
    };
    if (partial.size() == values.size()) {
        std::transform(partial.begin(), partial.end(), values.begin(), bounded);
        return values;
    }
    // The older property has no beginnings and ends: the whole side is taken.
    if (whole.size() == 4) {
        std::transform(whole.begin(), whole.end(), values.begin(), bounded);
        for (std::size_t side = 0; side < 4; ++side) {
            values[5 + 2 * side] = greatestCoordinate;
        }
    }
    return values;
}

std::vector<Rect> takenAreas(const StrutValues& v, const Rect& root) {
    const auto length = [&](std::size_t begin) { return v[begin + 1] - v[begin] + 1; };
    const Rect sides[4] = {
        {0, v[4], v[0], length(4)},
        {root.maxX() - v[1], v[6], v[1], length(6)},
        {v[8], 0, length(8), v[2]},
        {v[10], root.maxY() - v[3], length(10), v[3]},
    };
    std::vector<Rect> taken;
    std::copy_if(std::begin(sides), std::end(sides), std::back_inserter(taken),
                 [](const Rect& side) { return !side.isEmpty(); });
    return taken;
}

void answer(X11Connection& connection, const Asked& asked, const Rect& root, X11Struts& result) {
    xcb_connection_t* const c = connection.get();
    const StrutValues values =
        strutValues(connection.propertyReply(asked.partial), connection.propertyReply(asked.whole));
    const auto types = connection.propertyReply(asked.types);
    const auto attributes = xcbOwned(xcb_get_window_attributes_reply(c, asked.attributes, nullptr));
    const auto size = xcbOwned(xcb_get_geometry_reply(c, asked.size, nullptr));
    const auto corner = xcbOwned(xcb_translate_coordinates_reply(c, asked.corner, nullptr));
    if (!attributes || !size || !corner) {
        return;
    }
    X11Strut strut{{static_cast<double>(corner->dst_x), static_cast<double>(corner->dst_y),
                    static_cast<double>(size->width), static_cast<double>(size->height)},
                   takenAreas(values, root)};
    const bool isDock = std::find(types.begin(), types.end(),
                                  connection.atom("_NET_WM_WINDOW_TYPE_DOCK")) != types.end();
    if (isDock || !strut.taken.empty()) {
        result.windows.insert(asked.id);
    }
    if (!strut.taken.empty() && attributes->map_state == XCB_MAP_STATE_VIEWABLE) {
        result.struts.push_back(std::move(strut));
    }
}

bool standsOnAny(const Rect& window, const std::vector<Rect>& screens) {
    return std::any_of(screens.begin(), screens.end(),
                       [&](const Rect& screen) { return screen.intersects(window); });
}

/// The area without one rectangle at its edge: the largest of the four parts that are left.
Rect without(const Rect& area, const Rect& taken) {
    const Rect cut = area.intersection(taken);
    if (cut.isEmpty()) {
        return area;
    }
    const Rect parts[4] = {
        {cut.maxX(), area.y, area.maxX() - cut.maxX(), area.height},
        {area.x, area.y, cut.minX() - area.x, area.height},
        {area.x, cut.maxY(), area.width, area.maxY() - cut.maxY()},
        {area.x, area.y, area.width, cut.minY() - area.y},
    };
    return *std::max_element(std::begin(parts), std::end(parts), [](const Rect& a, const Rect& b) {
        return a.width * a.height < b.width * b.height;
    });
}

}  // namespace

X11Struts x11Struts(X11Connection& connection) {
    xcb_connection_t* const c = connection.get();
    const xcb_atom_t partial = connection.atom("_NET_WM_STRUT_PARTIAL");
    const xcb_atom_t whole = connection.atom("_NET_WM_STRUT");
    const xcb_atom_t type = connection.atom("_NET_WM_WINDOW_TYPE");
    std::vector<Asked> asked;
    for (const xcb_window_t id : managedWindows(connection)) {
        asked.push_back({id, connection.requestProperty(id, partial, XCB_ATOM_CARDINAL, 12),
                         connection.requestProperty(id, whole, XCB_ATOM_CARDINAL, 4),
                         connection.requestProperty(id, type, XCB_ATOM_ATOM, 8),
                         xcb_get_window_attributes(c, id), xcb_get_geometry(c, id),
                         xcb_translate_coordinates(c, id, connection.root(), 0, 0)});
    }
    const Rect root = rootArea(connection);
    X11Struts result;
    for (const Asked& one : asked) {
        answer(connection, one, root, result);
    }
    return result;
}

Rect x11WorkArea(const Rect& screen, const std::vector<Rect>& allScreens,
                 const std::vector<X11Strut>& struts) {
    Rect area = screen;
    for (const X11Strut& strut : struts) {
        const bool isElsewhere =
            standsOnAny(strut.window, allScreens) && !screen.intersects(strut.window);
        if (isElsewhere) {
            continue;
        }
        for (const Rect& taken : strut.taken) {
            const Rect left = without(area, taken);
            if (!left.isEmpty()) {
                area = left;
            }
        }
    }
    return area;
}

}  // namespace velmora
