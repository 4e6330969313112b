// SPDX-License-Identifier: MIT
#include "Velmora/Platform/Linux/EventLoopMainQueue.h"

#include <utility>

#include "Velmora/Platform/Linux/EventLoopInbox.h"

namespace velmora {

EventLoopMainQueue::EventLoopMainQueue() : inbox_(std::make_unique<EventLoopInbox>()) {}

EventLoopMainQueue::~EventLoopMainQueue() = default;

void EventLoopMainQueue::post(std::function<void()> work) {
    inbox_->post(std::move(work));
}

}  // namespace velmora
