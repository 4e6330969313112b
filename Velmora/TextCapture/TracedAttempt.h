// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>
#include <type_traits>

#include "Velmora/Platform/Clock.h"
#include "Velmora/TextCapture/ExtractionTrace.h"

namespace velmora {

/// Whom to tell about attempts, if anybody. Cheap to copy.
struct Tracing {
    ExtractionTrace* trace = nullptr;
    const Clock* clock = nullptr;  ///< Needed where there is a trace.

    /// Uptime in seconds; always 0 without a clock.
    double now() const { return clock != nullptr ? clock->uptime() : 0; }
};

/// The record of one attempt, handed to the trace when it goes out of scope. Does nothing at all
/// without a trace: texts that have to be put together are given as functions and never called.
class TracedAttempt {
  public:
    TracedAttempt(const Tracing& tracing, std::string_view attempt) : tracing_(tracing) {
        if (tracing_.trace != nullptr) {
            attempt_ = attempt;
            start_ = tracing_.now();
        }
    }

    /// The same with a running number behind the name.
    TracedAttempt(const Tracing& tracing, std::string_view attempt, std::size_t index)
        : TracedAttempt(tracing, attempt) {
        if (tracing_.trace != nullptr) {
            attempt_ += " " + std::to_string(index);
        }
    }

    TracedAttempt(const TracedAttempt&) = delete;
    TracedAttempt& operator=(const TracedAttempt&) = delete;

    ~TracedAttempt() {
        if (tracing_.trace != nullptr) {
            tracing_.trace->attemptEnded(attempt_, outcome_, (tracing_.now() - start_) * 1000);
        }
    }

    const Tracing& tracing() const { return tracing_; }

    /// What came of it; the last word counts.
    template <typename Text>
    void say(Text&& text) {
        if (tracing_.trace == nullptr) {
            return;
        }
        if constexpr (std::is_invocable_v<Text>) {
            outcome_ = text();
        } else {
            outcome_ = text;
        }
    }

  private:
    Tracing tracing_;
    std::string attempt_;
    std::string outcome_;
    double start_ = 0;
};

}  // namespace velmora
