// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <memory>

#include "Velmora/Platform/Linux/Speech/SpeechUtterance.h"

namespace velmora {

/// One connection to the speech daemon, opened when it is first needed and again after it broke.
/// Every call may wait for the daemon: for the speech thread only.
class SpeechDaemonConnection {
  public:
    /// Called from a thread of the connection's own when an utterance ended or was cut off.
    using Ended = std::function<void(unsigned long long number)>;

    explicit SpeechDaemonConnection(Ended ended);
    ~SpeechDaemonConnection();
    SpeechDaemonConnection(const SpeechDaemonConnection&) = delete;
    SpeechDaemonConnection& operator=(const SpeechDaemonConnection&) = delete;

    /// Hands the utterance over; false where no daemon takes it.
    bool say(const SpeechUtterance& utterance);

    /// Cuts off whatever this connection says, in mid-word.
    void cancel();

    void close();

  private:
    struct Link;
    bool open();
    bool sayOnce(const SpeechUtterance& utterance);

    Ended ended_;
    std::unique_ptr<Link> link_;
};

}  // namespace velmora
