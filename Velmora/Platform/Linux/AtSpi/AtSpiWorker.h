// SPDX-License-Identifier: MIT
#pragma once

#include <QThread>
#include <chrono>
#include <condition_variable>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>

#include "Velmora/Platform/Linux/EventLoopInbox.h"

namespace velmora {

/// A thread that runs jobs in the order in which they come, and receives signals in between.
class AtSpiWorker {
  public:
    AtSpiWorker();

    /// Waits for the job in hand; those behind it are dropped.
    ~AtSpiWorker();
    AtSpiWorker(const AtSpiWorker&) = delete;
    AtSpiWorker& operator=(const AtSpiWorker&) = delete;

    void post(std::function<void()> job);

    /// Runs this as the last job and ends the thread. Nothing may be posted afterwards.
    void finish(std::function<void()> last);

    /// The job's answer, or nothing if it has not come after this time. A job that is not waited
    /// for any more is not begun; one that has begun goes on, so it must own all that it uses.
    template <typename Answer>
    std::optional<Answer> run(std::chrono::milliseconds patience, std::function<Answer()> job) {
        struct Exchange {
            std::mutex mutex;
            std::condition_variable changed;
            std::optional<Answer> answer;
            bool abandoned = false;
        };
        const auto exchange = std::make_shared<Exchange>();
        post([exchange, job = std::move(job)] {
            {
                const std::lock_guard lock(exchange->mutex);
                if (exchange->abandoned) {
                    return;
                }
            }
            Answer answer = job();
            const std::lock_guard lock(exchange->mutex);
            exchange->answer = std::move(answer);
            exchange->changed.notify_all();
        });
        std::unique_lock lock(exchange->mutex);
        exchange->changed.wait_for(lock, patience, [&] { return exchange->answer.has_value(); });
        exchange->abandoned = true;
        return std::move(exchange->answer);
    }

  private:
    QThread thread_;
    std::unique_ptr<EventLoopInbox> inbox_;
};

}  // namespace velmora
