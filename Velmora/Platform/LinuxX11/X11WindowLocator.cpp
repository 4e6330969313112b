// SPDX-License-Identifier: MIT
#include "Velmora/Platform/LinuxX11/X11WindowLocator.h"

#include <xcb/shape.h>

#include <algorithm>
#include <cmath>

#include "Velmora/Platform/LinuxX11/X11ClientWindow.h"
#include "Velmora/Platform/LinuxX11/X11Connection.h"
#include "Velmora/Platform/LinuxX11/X11Opacity.h"
#include "Velmora/Platform/LinuxX11/X11Ownership.h"
#include "Velmora/Platform/LinuxX11/X11TopLevels.h"

namespace velmora {
namespace {

constexpr std::uint32_t propertyLimit = 32;
constexpr double greatestCoordinate = 32767;  // Of the protocol's 16 signed bits.

Rect shadowMargins(const std::vector<std::uint32_t>& extents) {
    if (extents.size() < 4) {
        return {};
    }
    // The property counts left, right, top, bottom.
    const auto margin = [&](std::size_t i) {
        return std::min(static_cast<double>(extents[i]), greatestCoordinate);
    };
    return {margin(0), margin(2), margin(1), margin(3)};
}

constexpr std::uint32_t titleLimit = 1024;  // In units of four bytes.

/// The bytes of a property of single bytes; empty where it is another kind.
std::string textReply(X11Connection& connection, xcb_get_property_cookie_t cookie) {
    const auto reply = xcbOwned(xcb_get_property_reply(connection.get(), cookie, nullptr));
    if (!reply || reply->format != 8) {
        return {};
    }
    return {static_cast<const char*>(xcb_get_property_value(reply.get())),
            static_cast<std::size_t>(xcb_get_property_value_length(reply.get()))};
}

bool contains(const std::vector<std::uint32_t>& values, std::uint32_t value) {
    return std::find(values.begin(), values.end(), value) != values.end();
}

}  // namespace

struct X11WindowLocator::Parts {
    Parts(const X11ClientRange& application, const std::string& display)
        : connection(display), ownership(connection, application), opacity(connection) {
        hasShapes = connection.hasExtension(xcb_shape_id);
    }

    /// The window that the server itself names at the point, if it is one that counts.
    std::optional<X11TopLevel> uppermost(Point point);
    bool isHit(const X11TopLevel& window, Point point) const;
    bool shapeHolds(const X11TopLevel& window, Point point,
                    xcb_shape_get_rectangles_cookie_t asked) const;
    std::optional<WindowInfo> describe(const Rect& frame, xcb_window_t client);
    std::optional<WindowInfo> describeTopLevel(const X11TopLevel& window, Point point);
    xcb_window_t activeWindow();
    xcb_window_t windowOfInput();

    X11Connection connection;
    X11Ownership ownership;
    X11Opacity opacity;
    bool hasShapes = false;
};

bool X11WindowLocator::Parts::shapeHolds(const X11TopLevel& window, Point point,
                                         xcb_shape_get_rectangles_cookie_t asked) const {
    const auto reply = xcbOwned(xcb_shape_get_rectangles_reply(connection.get(), asked, nullptr));
    if (!reply) {
        return false;
    }
    // Shapes count from the corner inside the border.
    const Point inside = {point.x - window.x - window.border, point.y - window.y - window.border};
    const xcb_rectangle_t* rectangles = xcb_shape_get_rectangles_rectangles(reply.get());
    const int count = xcb_shape_get_rectangles_rectangles_length(reply.get());
    return std::any_of(rectangles, rectangles + count, [&](const xcb_rectangle_t& r) {
        return Rect{static_cast<double>(r.x), static_cast<double>(r.y),
                    static_cast<double>(r.width), static_cast<double>(r.height)}
            .contains(inside);
    });
}

std::optional<X11TopLevel> X11WindowLocator::Parts::uppermost(Point point) {
    if (std::abs(point.x) > greatestCoordinate || std::abs(point.y) > greatestCoordinate) {
        return std::nullopt;
    }
    const auto cookie =
        xcb_translate_coordinates(connection.get(), connection.root(), connection.root(),
                                  static_cast<std::int16_t>(std::floor(point.x)),
                                  static_cast<std::int16_t>(std::floor(point.y)));
    const auto reply = xcbOwned(xcb_translate_coordinates_reply(connection.get(), cookie, nullptr));
    const auto window = reply && reply->child != XCB_WINDOW_NONE
                            ? x11TopLevel(connection, reply->child)
                            : std::nullopt;
    // Menus and panels may be our own, which are looked through: all windows have to be gone
    // through then.
    return window && !window->overrideRedirect && !opacity.isInvisible(window->id) ? window
                                                                                   : std::nullopt;
}

bool X11WindowLocator::Parts::isHit(const X11TopLevel& window, Point point) const {
    if (!window.frame().contains(point)) {
        return false;
    }
    if (!hasShapes) {
        return true;
    }
    const auto drawn = xcb_shape_get_rectangles(connection.get(), window.id, XCB_SHAPE_SK_BOUNDING);
    const auto touched = xcb_shape_get_rectangles(connection.get(), window.id, XCB_SHAPE_SK_INPUT);
    const bool isDrawn = shapeHolds(window, point, drawn);
    return shapeHolds(window, point, touched) && isDrawn;
}

std::optional<WindowInfo> X11WindowLocator::Parts::describe(const Rect& frame,
                                                            xcb_window_t client) {
    xcb_connection_t* const c = connection.get();
    const auto types = connection.requestProperty(client, connection.atom("_NET_WM_WINDOW_TYPE"),
                                                  XCB_ATOM_ATOM, propertyLimit);
    const auto extents = connection.requestProperty(client, connection.atom("_GTK_FRAME_EXTENTS"),
                                                    XCB_ATOM_CARDINAL, 4);
    const auto name = connection.requestProperty(client, connection.atom("_NET_WM_NAME"),
                                                 connection.atom("UTF8_STRING"), titleLimit);
    const auto owner = ownership.ask(client);
    const auto size = xcb_get_geometry(c, client);
    const auto corner = xcb_translate_coordinates(c, client, connection.root(), 0, 0);
    const bool isDesktop =
        contains(connection.propertyReply(types), connection.atom("_NET_WM_WINDOW_TYPE_DESKTOP"));
    WindowInfo info;
    info.nativeShadow = shadowMargins(connection.propertyReply(extents));
    info.title = textReply(connection, name);
    const auto sizeReply = xcbOwned(xcb_get_geometry_reply(c, size, nullptr));
    const auto cornerReply = xcbOwned(xcb_translate_coordinates_reply(c, corner, nullptr));
    const X11Ownership::Answer belongs = ownership.answer(owner);
    if (isDesktop || !sizeReply || !cornerReply || belongs.isOurs) {
        return std::nullopt;
    }
    info.id = client;
    info.nativeFrame = frame;
    info.nativeClient = {
        static_cast<double>(cornerReply->dst_x), static_cast<double>(cornerReply->dst_y),
        static_cast<double>(sizeReply->width), static_cast<double>(sizeReply->height)};
    info.processId = belongs.processId;
    return info;
}

std::optional<WindowInfo> X11WindowLocator::Parts::describeTopLevel(const X11TopLevel& window,
                                                                    Point point) {
    return describe(window.frame(), x11ClientWindow(connection, window.id, point));
}

xcb_window_t X11WindowLocator::Parts::activeWindow() {
    const xcb_atom_t name = connection.atom("_NET_ACTIVE_WINDOW");
    const auto reply = xcbOwned(xcb_get_property_reply(
        connection.get(), connection.requestProperty(connection.root(), name, XCB_ATOM_WINDOW, 1),
        nullptr));
    if (!reply || reply->type == XCB_ATOM_NONE) {
        return windowOfInput();  // No window manager tells.
    }
    if (reply->format != 32 || reply->value_len != 1) {
        return XCB_WINDOW_NONE;
    }
    return *static_cast<xcb_window_t*>(xcb_get_property_value(reply.get()));
}

xcb_window_t X11WindowLocator::Parts::windowOfInput() {
    const auto reply = xcbOwned(xcb_get_input_focus_reply(
        connection.get(), xcb_get_input_focus(connection.get()), nullptr));
    if (!reply || reply->focus == XCB_INPUT_FOCUS_NONE ||
        reply->focus == XCB_INPUT_FOCUS_POINTER_ROOT || reply->focus == connection.root()) {
        return XCB_WINDOW_NONE;
    }
    // A program may give the input to a window inside its own.
    return x11TopLevelOf(connection, reply->focus);
}

X11WindowLocator::X11WindowLocator(const X11ClientRange& application, const std::string& display)
    : parts_(std::make_unique<Parts>(application, display)) {}

X11WindowLocator::~X11WindowLocator() = default;

std::optional<WindowInfo> X11WindowLocator::topmostWindowAt(Point nativePoint) {
    X11Connection& connection = parts_->connection;
    if (!connection.isOpen() || !std::isfinite(nativePoint.x) || !std::isfinite(nativePoint.y)) {
        return std::nullopt;
    }
    connection.discardEvents();
    if (const auto window = parts_->uppermost(nativePoint)) {
        return parts_->describeTopLevel(*window, nativePoint);
    }
    const std::vector<X11TopLevel> windows = x11TopLevels(connection);
    for (auto window = windows.rbegin(); window != windows.rend(); ++window) {
        if (!parts_->isHit(*window, nativePoint) || parts_->opacity.isInvisible(window->id)) {
            continue;
        }
        if (window->overrideRedirect && parts_->ownership.isOurs(window->id)) {
            continue;
        }
        return parts_->describeTopLevel(*window, nativePoint);
    }
    return std::nullopt;
}

std::optional<WindowInfo> X11WindowLocator::focusedWindow() {
    X11Connection& connection = parts_->connection;
    if (!connection.isOpen()) {
        return std::nullopt;
    }
    connection.discardEvents();
    const xcb_window_t active = parts_->activeWindow();
    const xcb_window_t topLevel = x11TopLevelOf(connection, active);
    const auto geometry = xcbOwned(xcb_get_geometry_reply(
        connection.get(), xcb_get_geometry(connection.get(), topLevel), nullptr));
    if (!geometry) {
        return std::nullopt;
    }
    const Rect frame = {static_cast<double>(geometry->x), static_cast<double>(geometry->y),
                        geometry->width + 2.0 * geometry->border_width,
                        geometry->height + 2.0 * geometry->border_width};
    return parts_->describe(frame, active);
}

}  // namespace velmora
