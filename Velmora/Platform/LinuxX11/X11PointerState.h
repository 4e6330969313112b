// SPDX-License-Identifier: MIT
#pragma once

#include <xcb/xcb.h>

#include <cstdint>
#include <optional>
#include <set>

#include "Velmora/Platform/Geometry.h"
#include "Velmora/Platform/LinuxX11/X11Connection.h"
#include "Velmora/Platform/ModifierFlags.h"

// NOLINTNEXTLINE(readability-identifier-naming): the client library's own name.
struct xcb_input_xi_query_pointer_reply_t;

namespace velmora {

/// What the server knows of the pointer and the modifier keys at one moment.
struct X11PointerState {
    Point native;
    xcb_window_t child = XCB_WINDOW_NONE;  ///< The child of the asked window that holds it.
    ModifierFlags flags;
    std::set<std::uint32_t> buttons;  ///< The held ones but for those that scroll.
};

/// Buttons 4 to 7 stand for a turned wheel.
constexpr bool x11IsScrollButton(std::uint32_t button) {
    return button >= 4 && button <= 7;
}

/// The flags of the core protocol's eight modifier bits.
ModifierFlags x11ModifierFlags(std::uint32_t modifiers);

/// What the server answered to a question for the pointer.
X11PointerState x11PointerState(const xcb_input_xi_query_pointer_reply_t& reply);

/// Asks for the master pointer's state as seen from a window, and waits for the answer;
/// nothing where the server is gone.
std::optional<X11PointerState> x11PointerState(X11Connection& connection, std::uint16_t device,
                                               xcb_window_t window);

}  // namespace velmora
