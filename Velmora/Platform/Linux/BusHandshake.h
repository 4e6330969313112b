// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <string>

namespace velmora {

/// What a bus daemon does when somebody comes.
enum class BusHandshake {
    refused,  ///< There is nobody at that address.
    silent,   ///< Somebody is there and did not say a word in time.
    answered  ///< It answered, or its address is of a kind that is not looked at.
};

/// Whether the daemon of the message bus at this address (as in DBUS_SESSION_BUS_ADDRESS) is awake:
/// the first lines of the protocol are exchanged with it and the connection is closed again. The
/// bus library has no limit of its own for its first call, and waits for it in the thread that
/// serves every bus; so a bus that may be asleep is knocked at first. Sockets of this machine are
/// looked at; others count as answering. Waits this long at most. Any thread.
BusHandshake shakeHandsWithBus(const std::string& address, std::chrono::milliseconds patience);

}  // namespace velmora
