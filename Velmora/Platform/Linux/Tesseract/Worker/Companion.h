// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <deque>
#include <functional>
#include <mutex>
#include <thread>

namespace velmora {

/// A second thread beside the one that answers, for processors that have more than one core. It
/// sleeps while there is nothing for it to do. All calls come from the thread that made it.
class Companion {
  public:
    /// Which of the two works: each may have things of its own.
    enum class Lane : std::size_t { own = 0, companion = 1 };

    /// Starts the thread unless `isWanted` is false; then everything is done by who calls.
    explicit Companion(bool isWanted);
    ~Companion();
    Companion(const Companion&) = delete;
    Companion& operator=(const Companion&) = delete;

    /// Whether the machine has a core for it.
    static bool isWorthwhile();

    bool isThere() const { return thread_.joinable(); }

    /// Has something done beside what the caller does next. Tasks are done in order. Only where
    /// `isThere`.
    void begin(std::function<void()> task);

    /// Waits until it has done everything; false where that takes longer.
    bool awaitRest(std::chrono::seconds limit);

    /// Does something for every number below `count`, each once, by both threads if the other has
    /// nothing else to do, and returns when all of it is done. The work must not throw.
    void share(std::size_t count, const std::function<void(Lane lane, std::size_t at)>& work);

  private:
    void run();

    std::mutex mutex_;
    std::condition_variable changed_;
    std::deque<std::function<void()>> tasks_;
    bool isBusy_ = false;
    bool isEnding_ = false;
    std::thread thread_;
};

}  // namespace velmora
