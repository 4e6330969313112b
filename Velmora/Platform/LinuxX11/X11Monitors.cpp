// SPDX-License-Identifier: MIT
#include "Velmora/Platform/LinuxX11/X11Monitors.h"

#include <xcb/randr.h>

namespace velmora {
namespace {

constexpr std::size_t monitorLimit = 64;

std::string atomName(X11Connection& connection, xcb_atom_t atom) {
    xcb_connection_t* const c = connection.get();
    const auto reply = xcbOwned(xcb_get_atom_name_reply(c, xcb_get_atom_name(c, atom), nullptr));
    if (!reply) {
        return {};
    }
    return {xcb_get_atom_name_name(reply.get()),
            static_cast<std::size_t>(xcb_get_atom_name_name_length(reply.get()))};
}

bool hasMonitors(X11Connection& connection) {
    if (!connection.hasExtension(xcb_randr_id)) {
        return false;
    }
    xcb_connection_t* const c = connection.get();
    const auto version =
        xcbOwned(xcb_randr_query_version_reply(c, xcb_randr_query_version(c, 1, 5), nullptr));
    return version && (version->major_version > 1 || version->minor_version >= 5);
}

}  // namespace

std::vector<X11Monitor> x11Monitors(X11Connection& connection) {
    if (!hasMonitors(connection)) {
        return {};
    }
    xcb_connection_t* const c = connection.get();
    const auto reply = xcbOwned(
        xcb_randr_get_monitors_reply(c, xcb_randr_get_monitors(c, connection.root(), 1), nullptr));
    std::vector<X11Monitor> monitors;
    if (!reply) {
        return monitors;
    }
    auto info = xcb_randr_get_monitors_monitors_iterator(reply.get());
    for (; info.rem > 0 && monitors.size() < monitorLimit; xcb_randr_monitor_info_next(&info)) {
        const xcb_randr_monitor_info_t& one = *info.data;
        monitors.push_back({one.name,
                            atomName(connection, one.name),
                            {static_cast<double>(one.x), static_cast<double>(one.y),
                             static_cast<double>(one.width), static_cast<double>(one.height)}});
    }
    return monitors;
}

}  // namespace velmora
