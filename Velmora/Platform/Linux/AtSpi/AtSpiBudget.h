// SPDX-License-Identifier: MIT
#pragma once

#include <atomic>
#include <chrono>
#include <memory>
#include <thread>

#include "Velmora/Platform/Linux/AtSpi/AtSpiDeadline.h"

namespace velmora {

/// What one extraction may spend on waiting for other programs: counted over all its reads,
/// whatever else goes on between them. Its elements share it. The thread that made it spends it;
/// any other (the main thread) gets a short wait of its own for each read.
class AtSpiBudget {
  public:
    using Milliseconds = std::chrono::milliseconds;
    static constexpr Milliseconds perQuery{300};
    static constexpr Milliseconds perCall{200};
    static constexpr Milliseconds forFocus{50};
    static constexpr Milliseconds forMainThread{20};

    AtSpiBudget() = default;

    /// A share of another budget, for the program with the focus.
    explicit AtSpiBudget(std::shared_ptr<AtSpiBudget> whole)
        : whole_(std::move(whole)), limit_(forFocus), purpose_(AtSpiPurpose::focus) {}

    bool isMine() const { return std::this_thread::get_id() == thread_; }

    Milliseconds left() const {
        const Milliseconds mine = limit_ - std::chrono::duration_cast<Milliseconds>(
                                               std::chrono::microseconds(spent_.load()));
        return whole_ ? std::min(mine, whole_->left()) : mine;
    }

    void spend(std::chrono::microseconds time) {
        spent_ += time.count();
        if (whole_) {
            whole_->spend(time);
        }
    }

    AtSpiPurpose purpose() const { return purpose_; }

  private:
    std::shared_ptr<AtSpiBudget> whole_;
    Milliseconds limit_ = perQuery;
    AtSpiPurpose purpose_ = AtSpiPurpose::hover;
    std::thread::id thread_ = std::this_thread::get_id();
    std::atomic<std::int64_t> spent_ = 0;
};

}  // namespace velmora
