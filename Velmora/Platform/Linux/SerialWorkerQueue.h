// SPDX-License-Identifier: MIT
#pragma once

#include <condition_variable>
#include <deque>
#include <mutex>
#include <thread>

#include "Velmora/Platform/SerialQueue.h"

namespace velmora {

/// One thread, named after the label, that sleeps while there is nothing to do. Destroying it waits
/// until everything that was handed over has run.
class SerialWorkerQueue final : public SerialQueue {
  public:
    explicit SerialWorkerQueue(std::string label);
    SerialWorkerQueue(const SerialWorkerQueue&) = delete;
    SerialWorkerQueue& operator=(const SerialWorkerQueue&) = delete;
    ~SerialWorkerQueue() override;

    const std::string& label() const override { return label_; }
    void async(std::function<void()> work) override;

  private:
    void run();

    std::string label_;
    std::mutex mutex_;
    std::condition_variable wake_;
    std::deque<std::function<void()>> work_;
    bool ending_ = false;
    std::thread thread_;  // Last: it uses the others from its first moment.
};

}  // namespace velmora
