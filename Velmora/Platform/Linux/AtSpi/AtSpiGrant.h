// SPDX-License-Identifier: MIT
#pragma once

#include <atomic>

namespace velmora {

/// Whether other programs' texts can be read: the desktop's switch is on and the bus is there.
/// Written by the worker thread as the bus tells of changes, read by any.
struct AtSpiGrant {
    std::atomic<bool> switchedOn = false;
    std::atomic<bool> reachable = false;

    bool isGiven() const { return switchedOn && reachable; }
};

}  // namespace velmora
