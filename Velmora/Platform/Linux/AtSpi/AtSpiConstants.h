// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

namespace velmora {

/// The roles that are told apart, by their numbers on the bus.
enum class AtSpiRole : std::uint32_t {
    invalid = 0,
    dialog = 16,
    frame = 23,
    pageTab = 37,
    passwordText = 40,
    rootPane = 46,
    terminal = 60,
    window = 69,
    application = 75,
    staticText = 116,
};

/// The states that are looked at, as bits.
enum class AtSpiState : std::uint64_t {
    active = 1ULL << 1,
    focused = 1ULL << 12,
    multiLine = 1ULL << 17,
    showing = 1ULL << 25,
    visible = 1ULL << 30,
};

constexpr bool hasState(std::uint64_t states, AtSpiState state) {
    return (states & static_cast<std::uint64_t>(state)) != 0;
}

/// Longer values are never read whole.
constexpr int greatestWholeValue = 20000;

/// Stands for an embedded object in texts.
constexpr char16_t embeddedObject = 0xFFFC;

}  // namespace velmora
