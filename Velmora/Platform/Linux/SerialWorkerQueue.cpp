// SPDX-License-Identifier: MIT
#include "Velmora/Platform/Linux/SerialWorkerQueue.h"

#include <pthread.h>

#include <exception>
#include <utility>

namespace velmora {

namespace {

/// The kernel keeps 15 characters of a thread's name; the end of a label tells the most.
std::string threadName(const std::string& label) {
    constexpr std::size_t longest = 15;
    const std::size_t dot = label.rfind('.');
    return label.substr(dot == std::string::npos ? 0 : dot + 1).substr(0, longest);
}

}  // namespace

SerialWorkerQueue::SerialWorkerQueue(std::string label)
    : label_(std::move(label)), thread_([this] { run(); }) {
    ::pthread_setname_np(thread_.native_handle(), threadName(label_).c_str());
}

SerialWorkerQueue::~SerialWorkerQueue() {
    {
        const std::lock_guard lock(mutex_);
        ending_ = true;
    }
    wake_.notify_one();
    thread_.join();
}

void SerialWorkerQueue::async(std::function<void()> work) {
    {
        const std::lock_guard lock(mutex_);
        work_.push_back(std::move(work));
    }
    wake_.notify_one();
}

void SerialWorkerQueue::run() {
    while (true) {
        std::function<void()> next;
        {
            std::unique_lock lock(mutex_);
            wake_.wait(lock, [this] { return ending_ || !work_.empty(); });
            if (work_.empty()) {
                return;
            }
            next = std::move(work_.front());
            work_.pop_front();
        }
        try {
            next();
        } catch (const std::exception&) {
            // One piece of work that fails must not take the others with it.
        }
    }
}

}  // namespace velmora
