// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <string>

namespace velmora {

/// One named worker that runs what it is given in order, one at a time.
class SerialQueue {
  public:
    virtual ~SerialQueue() = default;

    virtual const std::string& label() const = 0;

    /// Returns at once. Callable from any thread.
    virtual void async(std::function<void()> work) = 0;
};

}  // namespace velmora
