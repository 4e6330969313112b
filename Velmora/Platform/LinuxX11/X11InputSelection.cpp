// SPDX-License-Identifier: MIT
#include "Velmora/Platform/LinuxX11/X11InputSelection.h"

#include <xcb/xinput.h>

#include "Velmora/Platform/LinuxX11/X11PointerState.h"
#include "Velmora/Platform/LinuxX11/XkbProtocol.h"

namespace velmora {
namespace {

/// 0 where there is none.
std::uint16_t firstMasterPointer(X11Connection& connection) {
    xcb_connection_t* const c = connection.get();
    const auto reply = xcbOwned(xcb_input_xi_query_device_reply(
        c, xcb_input_xi_query_device(c, XCB_INPUT_DEVICE_ALL_MASTER), nullptr));
    if (!reply) {
        return 0;
    }
    auto infos = xcb_input_xi_query_device_infos_iterator(reply.get());
    for (; infos.rem > 0; xcb_input_xi_device_info_next(&infos)) {
        if (infos.data->type == XCB_INPUT_DEVICE_TYPE_MASTER_POINTER) {
            return infos.data->deviceid;
        }
    }
    return 0;
}

}  // namespace

X11InputSelection::X11InputSelection(X11Connection& connection) : connection_(connection) {
    isAvailable_ = readPointerExtension() && readKeyboardExtension();
}

bool X11InputSelection::readPointerExtension() {
    if (!connection_.hasExtension(xcb_input_id)) {
        return false;
    }
    xcb_connection_t* const c = connection_.get();
    pointerOpcode_ = xcb_get_extension_data(c, &xcb_input_id)->major_opcode;
    // From version 2.1 on raw events arrive during other programs' grabs.
    const auto version =
        xcbOwned(xcb_input_xi_query_version_reply(c, xcb_input_xi_query_version(c, 2, 2), nullptr));
    if (!version || version->major_version < 2 ||
        (version->major_version == 2 && version->minor_version < 1)) {
        return false;
    }
    masterPointer_ = firstMasterPointer(connection_);
    return masterPointer_ != 0;
}

bool X11InputSelection::readKeyboardExtension() {
    if (!connection_.hasExtension(xcb_xkb_id)) {
        return false;
    }
    xcb_connection_t* const c = connection_.get();
    keyboardEvent_ = xcb_get_extension_data(c, &xcb_xkb_id)->first_event;
    const auto use =
        xcbOwned(xcb_xkb_use_extension_reply(c, xcb_xkb_use_extension(c, 1, 0), nullptr));
    return use && use->supported != 0;
}

void X11InputSelection::select(bool pointer, bool modifiers) {
    if (!isAvailable_) {
        return;
    }
    if (pointer != pointerSelected_) {
        selectPointer(pointer);
    }
    if (modifiers != modifiersSelected_) {
        selectModifiers(modifiers);
    }
    // Nothing that happens after this returns is missed.
    xcb_connection_t* const c = connection_.get();
    xcbOwned(xcb_get_input_focus_reply(c, xcb_get_input_focus(c), nullptr));
}

void X11InputSelection::selectPointer(bool wanted) {
    struct {
        xcb_input_event_mask_t head;
        std::uint32_t bits;
    } mask{};
    mask.head.deviceid = XCB_INPUT_DEVICE_ALL_MASTER;
    mask.head.mask_len = 1;
    mask.bits = wanted ? XCB_INPUT_XI_EVENT_MASK_RAW_MOTION |
                             XCB_INPUT_XI_EVENT_MASK_RAW_BUTTON_PRESS |
                             XCB_INPUT_XI_EVENT_MASK_RAW_BUTTON_RELEASE
                       : 0U;
    xcb_input_xi_select_events(connection_.get(), connection_.root(), 1, &mask.head);
    pointerSelected_ = wanted;
}

void X11InputSelection::selectModifiers(bool wanted) {
    // Of all that the keyboard extension tells, the modifiers in effect and nothing else.
    const std::uint16_t details[2] = {
        0x3FFF,  // Every detail that there is gets set,
        wanted ? static_cast<std::uint16_t>(XCB_XKB_STATE_PART_MODIFIER_STATE)
               : static_cast<std::uint16_t>(0)};
    xcb_xkb_select_events(connection_.get(), XCB_XKB_ID_USE_CORE_KBD,
                          XCB_XKB_EVENT_TYPE_STATE_NOTIFY, 0, 0, 0, 0, details);
    modifiersSelected_ = wanted;
}

std::optional<X11InputSelection::Raw> X11InputSelection::rawEvent(
    const xcb_generic_event_t& event) const {
    if ((event.response_type & 0x7F) != XCB_GE_GENERIC) {
        return std::nullopt;
    }
    const auto& raw = reinterpret_cast<const xcb_input_raw_button_press_event_t&>(event);
    if (raw.extension != pointerOpcode_) {
        return std::nullopt;
    }
    switch (raw.event_type) {
        case XCB_INPUT_RAW_BUTTON_PRESS:
            return Raw{RawKind::press, raw.detail};
        case XCB_INPUT_RAW_BUTTON_RELEASE:
            return Raw{RawKind::release, raw.detail};
        case XCB_INPUT_RAW_MOTION: {
            // Axes 0 and 1 move the pointer; a wheel with a fine resolution has axes of its own.
            const std::uint32_t* axes = xcb_input_raw_button_press_valuator_mask(&raw);
            if (raw.valuators_len > 0 && (axes[0] & 3U) != 0) {
                return Raw{RawKind::motion, 0};
            }
            return std::nullopt;
        }
        default:
            return std::nullopt;
    }
}

std::optional<ModifierFlags> X11InputSelection::modifierEvent(
    const xcb_generic_event_t& event) const {
    if ((event.response_type & 0x7F) != keyboardEvent_) {
        return std::nullopt;
    }
    const auto& state = reinterpret_cast<const xcb_xkb_state_notify_event_t&>(event);
    if (state.xkbType != XCB_XKB_STATE_NOTIFY) {
        return std::nullopt;
    }
    return x11ModifierFlags(state.mods);
}

}  // namespace velmora
