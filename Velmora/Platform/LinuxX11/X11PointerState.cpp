// SPDX-License-Identifier: MIT
#include "Velmora/Platform/LinuxX11/X11PointerState.h"

#include <xcb/xinput.h>

#include <cmath>

namespace velmora {
namespace {

constexpr double fixedPoint = 65536;  // The protocol's 16.16 numbers.

/// Held buttons as bits, button 1 being bit 1.
std::set<std::uint32_t> heldButtons(const xcb_input_xi_query_pointer_reply_t& reply) {
    std::set<std::uint32_t> held;
    const std::uint32_t* words = xcb_input_xi_query_pointer_buttons(&reply);
    const int count = xcb_input_xi_query_pointer_buttons_length(&reply);
    for (std::uint32_t bit = 1; bit < static_cast<std::uint32_t>(count) * 32; ++bit) {
        if ((words[bit / 32] & (1U << (bit % 32))) != 0 && !x11IsScrollButton(bit)) {
            held.insert(bit);
        }
    }
    return held;
}

}  // namespace

ModifierFlags x11ModifierFlags(std::uint32_t modifiers) {
    std::uint32_t bits = 0;
    const auto add = [&](std::uint32_t modifier, std::uint32_t flag) {
        bits |= (modifiers & modifier) != 0 ? flag : 0U;
    };
    // Shift is its own bit alone: Caps Lock makes capitals too, but is another.
    add(XCB_MOD_MASK_SHIFT, ModifierFlags::shift);
    add(XCB_MOD_MASK_LOCK, ModifierFlags::capsLock);
    add(XCB_MOD_MASK_CONTROL, ModifierFlags::control);
    add(XCB_MOD_MASK_1, ModifierFlags::alt);
    add(XCB_MOD_MASK_4, ModifierFlags::super);
    return {bits};
}

X11PointerState x11PointerState(const xcb_input_xi_query_pointer_reply_t& reply) {
    X11PointerState state;
    state.native = {std::floor(reply.root_x / fixedPoint), std::floor(reply.root_y / fixedPoint)};
    state.child = reply.child;
    // The server leaves the modifiers in effect out of this reply; they are these together.
    state.flags = x11ModifierFlags(reply.mods.base | reply.mods.latched | reply.mods.locked);
    state.buttons = heldButtons(reply);
    return state;
}

std::optional<X11PointerState> x11PointerState(X11Connection& connection, std::uint16_t device,
                                               xcb_window_t window) {
    xcb_connection_t* const c = connection.get();
    const auto reply = xcbOwned(xcb_input_xi_query_pointer_reply(
        c, xcb_input_xi_query_pointer(c, window, device), nullptr));
    return reply ? std::optional(x11PointerState(*reply)) : std::nullopt;
}

}  // namespace velmora
