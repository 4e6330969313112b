// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

namespace velmora {

/// The identifiers that the X server gave to one connection: every window made over it has one.
struct X11ClientRange {
    std::uint32_t base = 0;
    std::uint32_t mask = 0;  ///< The bits that the connection chooses; 0 for no range at all.

    bool contains(std::uint32_t id) const { return mask != 0 && (id & ~mask) == base; }

    /// The range of the running QGuiApplication's connection; no range where it has none. Main
    /// thread.
    static X11ClientRange ofApplication();
};

}  // namespace velmora
