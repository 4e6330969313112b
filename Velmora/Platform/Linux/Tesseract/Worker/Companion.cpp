// SPDX-License-Identifier: MIT
#include "Velmora/Platform/Linux/Tesseract/Worker/Companion.h"

#include <atomic>
#include <csignal>
#include <utility>

namespace velmora {

namespace {

/// Signals are the main thread's.
void leaveSignals() {
    sigset_t all;
    ::sigfillset(&all);
    ::pthread_sigmask(SIG_BLOCK, &all, nullptr);
}

}  // namespace

Companion::Companion(bool isWanted) {
    if (isWanted) {
        thread_ = std::thread([this] { run(); });
    }
}

Companion::~Companion() {
    {
        const std::lock_guard lock(mutex_);
        isEnding_ = true;
    }
    changed_.notify_all();
    if (thread_.joinable()) {
        thread_.join();
    }
}

bool Companion::isWorthwhile() {
    return std::thread::hardware_concurrency() > 1;
}

void Companion::run() {
    leaveSignals();
    std::unique_lock lock(mutex_);
    while (true) {
        changed_.wait(lock, [this] { return isEnding_ || !tasks_.empty(); });
        if (isEnding_) {
            return;
        }
        const std::function<void()> task = std::move(tasks_.front());
        tasks_.pop_front();
        isBusy_ = true;
        lock.unlock();
        task();
        lock.lock();
        isBusy_ = false;
        changed_.notify_all();
    }
}

void Companion::begin(std::function<void()> task) {
    {
        const std::lock_guard lock(mutex_);
        tasks_.push_back(std::move(task));
    }
    changed_.notify_all();
}

bool Companion::awaitRest(std::chrono::seconds limit) {
    std::unique_lock lock(mutex_);
    return changed_.wait_for(lock, limit, [this] { return tasks_.empty() && !isBusy_; });
}

void Companion::share(std::size_t count,
                      const std::function<void(Lane lane, std::size_t at)>& work) {
    std::atomic<std::size_t> next{0};
    const auto workOff = [&](Lane lane) {
        for (std::size_t at = next++; at < count; at = next++) {
            work(lane, at);
        }
    };
    bool isHelped = false;
    if (isThere() && count > 1) {
        const std::lock_guard lock(mutex_);
        isHelped = tasks_.empty() && !isBusy_;
        if (isHelped) {
            tasks_.emplace_back([&workOff] { workOff(Lane::companion); });
        }
    }
    if (isHelped) {
        changed_.notify_all();
    }
    workOff(Lane::own);
    if (isHelped) {
        // Nobody else hands out tasks meanwhile, so what is left is the one from above.
        std::unique_lock lock(mutex_);
        tasks_.clear();
        changed_.wait(lock, [this] { return !isBusy_; });
    }
}

}  // namespace velmora
