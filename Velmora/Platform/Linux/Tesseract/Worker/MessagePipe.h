// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <optional>

#include "Velmora/Platform/Recognition/RecognizerMessage.h"

namespace velmora {

/// The worker's end of the connection: waits for requests without waking up in between.
class MessagePipe {
  public:
    explicit MessagePipe(int descriptor) : descriptor_(descriptor) {}

    /// Whether a request comes, or the program goes, before the time is over.
    bool waitsFor(std::chrono::milliseconds time) const;

    /// The next request; nothing once the program is gone or says something unintelligible.
    std::optional<RecognizerMessage> receive() const;

    /// False once the program is gone.
    bool send(const RecognizerMessage& message) const;

  private:
    bool receiveAll(std::uint8_t* data, std::size_t size) const;

    int descriptor_;
};

}  // namespace velmora
