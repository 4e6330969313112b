// SPDX-License-Identifier: MIT
#pragma once

#include <functional>

namespace velmora {

/// Runs work on the main thread, in the order in which it was handed over.
class MainQueue {
  public:
    virtual ~MainQueue() = default;

    /// Never runs `work` before returning. Callable from any thread.
    virtual void post(std::function<void()> work) = 0;
};

}  // namespace velmora
