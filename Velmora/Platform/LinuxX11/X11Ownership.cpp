// SPDX-License-Identifier: MIT
#include "Velmora/Platform/LinuxX11/X11Ownership.h"

#include <unistd.h>

namespace velmora {

X11Ownership::X11Ownership(X11Connection& connection, const X11ClientRange& application)
    : connection_(connection), application_(application) {
    if (!connection_.hasExtension(xcb_res_id)) {
        return;
    }
    const auto cookie = xcb_res_query_version(connection_.get(), 1, 2);
    const auto version = xcbOwned(xcb_res_query_version_reply(connection_.get(), cookie, nullptr));
    serverKnows_ = version && (version->server_major > 1 ||
                               (version->server_major == 1 && version->server_minor >= 2));
    if (serverKnows_) {
        ourServerProcessId_ = serverProcessId(xcb_get_setup(connection_.get())->resource_id_base);
    }
}

std::optional<std::uint32_t> X11Ownership::serverProcessId(xcb_window_t window) {
    if (!serverKnows_) {
        return std::nullopt;
    }
    const xcb_res_client_id_spec_t wanted = {window, XCB_RES_CLIENT_ID_MASK_LOCAL_CLIENT_PID};
    const auto cookie = xcb_res_query_client_ids(connection_.get(), 1, &wanted);
    const auto reply = xcbOwned(xcb_res_query_client_ids_reply(connection_.get(), cookie, nullptr));
    if (!reply) {
        return std::nullopt;
    }
    auto ids = xcb_res_query_client_ids_ids_iterator(reply.get());
    for (; ids.rem > 0; xcb_res_client_id_value_next(&ids)) {
        if ((ids.data->spec.mask & XCB_RES_CLIENT_ID_MASK_LOCAL_CLIENT_PID) != 0 &&
            xcb_res_client_id_value_value_length(ids.data) > 0) {
            return *xcb_res_client_id_value_value(ids.data);
        }
    }
    return std::nullopt;
}

bool X11Ownership::isOurs(xcb_window_t window) {
    if (application_.contains(window)) {
        return true;
    }
    return ourServerProcessId_ && serverProcessId(window) == ourServerProcessId_;
}

std::int64_t X11Ownership::processId(xcb_window_t window) {
    // The server counts processes as its own name space does. Where it sees this process under
    // another number (it runs outside a container, say), only what programs say can be compared
    // with other numbers of ours.
    const bool sameNameSpace =
        ourServerProcessId_ && *ourServerProcessId_ == static_cast<std::uint32_t>(getpid());
    if (sameNameSpace) {
        if (const auto known = serverProcessId(window)) {
            return *known;
        }
    }
    const auto said =
        connection_.property(window, connection_.atom("_NET_WM_PID"), XCB_ATOM_CARDINAL, 1);
    if (!said.empty() && said[0] > 0) {
        return said[0];
    }
    return -1;
}

}  // namespace velmora
