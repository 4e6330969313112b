// SPDX-License-Identifier: MIT
#include "Velmora/Platform/Recorded/ManualMainQueue.h"

#include <utility>

namespace velmora {

void ManualMainQueue::post(std::function<void()> work) {
    const std::lock_guard lock(mutex_);
    work_.push_back(std::move(work));
}

std::size_t ManualMainQueue::runAll() {
    std::size_t count = 0;
    while (true) {
        std::function<void()> next;
        {
            const std::lock_guard lock(mutex_);
            if (work_.empty()) {
                return count;
            }
            next = std::move(work_.front());
            work_.pop_front();
        }
        next();
        ++count;
    }
}

std::size_t ManualMainQueue::pending() const {
    const std::lock_guard lock(mutex_);
    return work_.size();
}

}  // namespace velmora
