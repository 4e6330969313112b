// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>
#include <chrono>

namespace velmora {

/// On whose behalf a program is asked, which decides how a silent one is remembered.
enum class AtSpiPurpose {
    hover,      ///< The program under the pointer.
    focus,      ///< The program with the keyboard focus, which must answer faster.
    mainThread  ///< A rectangle that the main thread wants: too short a time to blame anyone.
};

/// How long one job may still ask other programs.
class AtSpiDeadline {
  public:
    using Clock = std::chrono::steady_clock;
    using Milliseconds = std::chrono::milliseconds;

    AtSpiDeadline(Milliseconds total, Milliseconds perCall, AtSpiPurpose purpose)
        : end_(Clock::now() + total), perCall_(perCall), purpose_(purpose) {}

    AtSpiPurpose purpose() const { return purpose_; }

    /// What the next call may take; zero when the time is up.
    Milliseconds forNextCall() const {
        const auto left = std::chrono::ceil<Milliseconds>(end_ - Clock::now());
        return std::clamp(left, Milliseconds(0), perCall_);
    }

    bool isOver() const { return forNextCall() <= Milliseconds(0); }

    /// Ends the time: a program did not answer, so that asking it on is in vain.
    void giveUp() { end_ = Clock::now(); }

  private:
    Clock::time_point end_;
    Milliseconds perCall_;
    AtSpiPurpose purpose_;
};

}  // namespace velmora
