// SPDX-License-Identifier: MIT
#pragma once

#include <deque>
#include <functional>
#include <string>
#include <utility>

#include "Velmora/Platform/SerialQueue.h"

namespace velmora {

/// A queue that runs its work when it is told to, on the calling thread.
class ManualQueue final : public SerialQueue {
  public:
    explicit ManualQueue(std::string label) : label_(std::move(label)) {}

    const std::string& label() const override { return label_; }
    void async(std::function<void()> work) override { work_.push_back(std::move(work)); }

    std::size_t pending() const { return work_.size(); }

    /// Runs the oldest piece of work; false when there is none.
    bool runOne() {
        if (work_.empty()) {
            return false;
        }
        const auto work = std::move(work_.front());
        work_.pop_front();
        work();
        return true;
    }

    void runAll() {
        while (runOne()) {
        }
    }

  private:
    std::string label_;
    std::deque<std::function<void()>> work_;
};

}  // namespace velmora
