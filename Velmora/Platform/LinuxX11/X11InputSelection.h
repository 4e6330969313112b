// SPDX-License-Identifier: MIT
#pragma once

#include <xcb/xcb.h>

#include <cstdint>
#include <optional>

#include "Velmora/Platform/LinuxX11/X11Connection.h"
#include "Velmora/Platform/ModifierFlags.h"

namespace velmora {

/// Which input events of the whole desktop a connection gets: raw motion and buttons, and changes
/// of the modifiers. Raw events arrive whatever window the pointer is over and also while another
/// program has grabbed it. Keys are never among them.
class X11InputSelection {
  public:
    explicit X11InputSelection(X11Connection& connection);

    /// Whether the server can tell all this.
    bool isAvailable() const { return isAvailable_; }

    /// The pointer that all devices move together.
    std::uint16_t masterPointer() const { return masterPointer_; }

    /// From now on these and no others.
    void select(bool pointer, bool modifiers);

    enum class RawKind { motion, press, release };
    struct Raw {
        RawKind kind;
        std::uint32_t button;  ///< 0 for motion.
    };

    /// What a raw event tells; nothing for other events and for motion of wheels alone.
    std::optional<Raw> rawEvent(const xcb_generic_event_t& event) const;

    /// The modifiers in effect after a change of them; nothing for other events.
    std::optional<ModifierFlags> modifierEvent(const xcb_generic_event_t& event) const;

  private:
    bool readPointerExtension();
    bool readKeyboardExtension();
    void selectPointer(bool wanted);
    void selectModifiers(bool wanted);

    X11Connection& connection_;
    bool isAvailable_ = false;
    bool pointerSelected_ = false;
    bool modifiersSelected_ = false;
    std::uint16_t masterPointer_ = 0;
    std::uint8_t pointerOpcode_ = 0;
    std::uint8_t keyboardEvent_ = 0;
};

}  // namespace velmora
