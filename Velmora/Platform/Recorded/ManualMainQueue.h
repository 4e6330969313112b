// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <deque>
#include <functional>
#include <mutex>

#include "Velmora/Platform/MainQueue.h"

namespace velmora {

/// A main queue that runs its work when it is told to. `post` from any thread, the rest from one.
class ManualMainQueue final : public MainQueue {
  public:
    void post(std::function<void()> work) override;

    /// Runs everything that waits, also what is handed over meanwhile. Returns how many ran.
    std::size_t runAll();

    /// How many wait.
    std::size_t pending() const;

  private:
    mutable std::mutex mutex_;
    std::deque<std::function<void()>> work_;
};

}  // namespace velmora
