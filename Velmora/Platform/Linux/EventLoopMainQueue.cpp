// SPDX-License-Identifier: MIT
#include "Velmora/Platform/Linux/EventLoopMainQueue.h"

#include <QMetaObject>
#include <QObject>
#include <utility>

namespace velmora {

class EventLoopMainQueue::Receiver final : public QObject {};

EventLoopMainQueue::EventLoopMainQueue() : receiver_(std::make_unique<Receiver>()) {}

EventLoopMainQueue::~EventLoopMainQueue() = default;

void EventLoopMainQueue::post(std::function<void()> work) {
    QMetaObject::invokeMethod(receiver_.get(), std::move(work), Qt::QueuedConnection);
}

}  // namespace velmora
