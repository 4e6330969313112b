// SPDX-License-Identifier: MIT
#pragma once

#include <memory>

#include "Velmora/Platform/MainQueue.h"

namespace velmora {

class EventLoopInbox;

/// The event loop of the thread on which this object was made, which is the main thread. Work that
/// is still waiting when this object goes is dropped.
class EventLoopMainQueue final : public MainQueue {
  public:
    EventLoopMainQueue();
    EventLoopMainQueue(const EventLoopMainQueue&) = delete;
    EventLoopMainQueue& operator=(const EventLoopMainQueue&) = delete;
    ~EventLoopMainQueue() override;

    void post(std::function<void()> work) override;

  private:
    std::unique_ptr<EventLoopInbox> inbox_;
};

}  // namespace velmora
