// SPDX-License-Identifier: MIT
#include "Velmora/Platform/LinuxX11/X11Ownership.h"

#include <unistd.h>

#include <algorithm>
#include <utility>

namespace velmora {
namespace {

constexpr int childLimit = 64;
constexpr int frameLevels = 2;

}  // namespace

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

xcb_res_query_client_ids_cookie_t X11Ownership::askServer(xcb_window_t window) {
    const xcb_res_client_id_spec_t wanted = {window, XCB_RES_CLIENT_ID_MASK_LOCAL_CLIENT_PID};
    return xcb_res_query_client_ids(connection_.get(), 1, &wanted);
}

std::optional<std::uint32_t> X11Ownership::serverProcessId(xcb_window_t window) {
    return serverKnows_ ? answeredByServer(askServer(window)) : std::nullopt;
}

std::optional<std::uint32_t> X11Ownership::answeredByServer(
    xcb_res_query_client_ids_cookie_t cookie) {
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

X11Ownership::OwnerQuestion X11Ownership::askForOwner(xcb_window_t window) {
    OwnerQuestion question{window, std::nullopt};
    if (ourServerProcessId_ && !application_.contains(window)) {
        question.server = askServer(window);
    }
    return question;
}

bool X11Ownership::isOurs(const OwnerQuestion& question) {
    return application_.contains(question.window) ||
           (question.server && answeredByServer(*question.server) == ourServerProcessId_);
}

std::uint32_t X11Ownership::clientOf(xcb_window_t window) const {
    return window & ~xcb_get_setup(connection_.get())->resource_id_mask;
}

void X11Ownership::collectOurs(const std::vector<Part>& parts, Clients& clients,
                               std::set<xcb_window_t>& ours) {
    // One question for each connection, however many windows it made.
    std::vector<std::pair<std::uint32_t, xcb_res_query_client_ids_cookie_t>> asked;
    for (const Part& part : parts) {
        const std::uint32_t client = clientOf(part.window);
        const bool isApplications = application_.contains(part.window);
        if (clients.emplace(client, isApplications).second && !isApplications &&
            ourServerProcessId_) {
            asked.emplace_back(client, askServer(part.window));
        }
    }
    for (const auto& [client, cookie] : asked) {
        clients[client] = answeredByServer(cookie) == ourServerProcessId_;
    }
    for (const Part& part : parts) {
        if (clients[clientOf(part.window)]) {
            ours.insert(part.topLevel);
        }
    }
}

std::vector<X11Ownership::Part> X11Ownership::childrenOf(const std::vector<Part>& parts,
                                                         const std::set<xcb_window_t>& without) {
    xcb_connection_t* const c = connection_.get();
    std::vector<xcb_query_tree_cookie_t> asked;
    asked.reserve(parts.size());
    for (const Part& part : parts) {
        asked.push_back(xcb_query_tree(c, part.window));
    }
    std::vector<Part> children;
    for (std::size_t i = 0; i < parts.size(); ++i) {
        const auto tree = xcbOwned(xcb_query_tree_reply(c, asked[i], nullptr));
        if (!tree || without.count(parts[i].topLevel) > 0) {
            continue;
        }
        const xcb_window_t* list = xcb_query_tree_children(tree.get());
        const int count = std::min(xcb_query_tree_children_length(tree.get()), childLimit);
        for (int child = 0; child < count; ++child) {
            children.push_back({list[child], parts[i].topLevel});
        }
    }
    return children;
}

std::set<xcb_window_t> X11Ownership::ourTopLevels(const std::vector<xcb_window_t>& windows) {
    std::set<xcb_window_t> ours;
    std::vector<Part> parts;
    parts.reserve(windows.size());
    for (const xcb_window_t window : windows) {
        parts.push_back({window, window});
    }
    Clients clients;
    collectOurs(parts, clients, ours);
    for (int level = 0; level < frameLevels && !parts.empty(); ++level) {
        parts = childrenOf(parts, ours);
        collectOurs(parts, clients, ours);
    }
    return ours;
}

std::int64_t X11Ownership::processId(xcb_window_t window) {
    return answer(ask(window)).processId;
}

X11Ownership::Question X11Ownership::ask(xcb_window_t window) {
    Question question{window, std::nullopt, {}};
    if (ourServerProcessId_) {
        question.server = askServer(window);
    }
    question.said =
        connection_.requestProperty(window, connection_.atom("_NET_WM_PID"), XCB_ATOM_CARDINAL, 1);
    return question;
}

X11Ownership::Answer X11Ownership::answer(const Question& question) {
    std::optional<std::uint32_t> known;
    if (question.server) {
        known = answeredByServer(*question.server);
    }
    const std::vector<std::uint32_t> said = connection_.propertyReply(question.said);
    Answer result;
    result.isOurs = application_.contains(question.window) ||
                    (known && ourServerProcessId_ && *known == *ourServerProcessId_);
    // The server counts processes as its own name space does. Where it sees this process under
    // another number (it runs outside a container, say), only what programs say can be compared
    // with other numbers of ours.
    const bool sameNameSpace =
        ourServerProcessId_ && *ourServerProcessId_ == static_cast<std::uint32_t>(getpid());
    if (sameNameSpace && known) {
        result.processId = *known;
    } else if (!said.empty() && said[0] > 0) {
        result.processId = said[0];
    }
    return result;
}

}  // namespace velmora
