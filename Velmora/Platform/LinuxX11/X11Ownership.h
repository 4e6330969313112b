// SPDX-License-Identifier: MIT
#pragma once

#include <xcb/res.h>
#include <xcb/xcb.h>

#include <cstdint>
#include <map>
#include <optional>
#include <set>
#include <vector>

#include "Velmora/Platform/LinuxX11/X11ClientRange.h"
#include "Velmora/Platform/LinuxX11/X11Connection.h"

namespace velmora {

/// Tells whose windows are whose. A window is ours when it was made over the application's
/// connection, or over any other connection that the server knows to be of this process (a
/// toolkit's file dialog may open one of its own).
class X11Ownership {
  public:
    X11Ownership(X11Connection& connection, const X11ClientRange& application);

    /// What was asked about who made a window, answered later.
    struct OwnerQuestion {
        xcb_window_t window = XCB_WINDOW_NONE;
        std::optional<xcb_res_query_client_ids_cookie_t> server;
    };
    OwnerQuestion askForOwner(xcb_window_t window);
    /// Waits where the answer is not there yet.
    bool isOurs(const OwnerQuestion& question);
    bool isOurs(xcb_window_t window) { return isOurs(askForOwner(window)); }

    /// What was asked about a window's process, answered later.
    struct Question {
        xcb_window_t window = XCB_WINDOW_NONE;
        std::optional<xcb_res_query_client_ids_cookie_t> server;
        xcb_get_property_cookie_t said{};
    };
    struct Answer {
        bool isOurs = false;
        std::int64_t processId = -1;  ///< As `processId` tells.
    };
    Question ask(xcb_window_t window);
    Answer answer(const Question& question);

    /// The windows of a list that are ours or hold one of ours within two levels, as a window
    /// manager's frame does. A few round trips whatever the list's length.
    std::set<xcb_window_t> ourTopLevels(const std::vector<xcb_window_t>& windows);

    /// The process behind a window: what the server knows of the connection and what the program
    /// says of itself; −1 where neither tells.
    std::int64_t processId(xcb_window_t window);

  private:
    /// A window that is looked into, and the top-level window that it belongs to.
    struct Part {
        xcb_window_t window;
        xcb_window_t topLevel;
    };

    std::optional<std::uint32_t> serverProcessId(xcb_window_t window);
    xcb_res_query_client_ids_cookie_t askServer(xcb_window_t window);
    std::optional<std::uint32_t> answeredByServer(xcb_res_query_client_ids_cookie_t cookie);
    /// The connection that made a window, as the server numbers connections.
    std::uint32_t clientOf(xcb_window_t window) const;
    /// Whether connections are ours, as far as that is known.
    using Clients = std::map<std::uint32_t, bool>;
    void collectOurs(const std::vector<Part>& parts, Clients& clients,
                     std::set<xcb_window_t>& ours);
    std::vector<Part> childrenOf(const std::vector<Part>& parts,
                                 const std::set<xcb_window_t>& without);

    X11Connection& connection_;
    X11ClientRange application_;
    bool serverKnows_ = false;
    std::optional<std::uint32_t> ourServerProcessId_;
};

}  // namespace velmora
