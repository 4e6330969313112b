// SPDX-License-Identifier: MIT
#include "Velmora/Platform/Linux/EventLoopInbox.h"

#include <QCoreApplication>
#include <QEvent>
#include <memory>
#include <utility>

namespace velmora {

namespace {

constexpr QEvent::Type workCame = QEvent::User;

}  // namespace

void EventLoopInbox::post(std::function<void()> work) {
    // Made before the lock is taken, so that the other thread sees it whole.
    auto wake = std::make_unique<QEvent>(workCame);
    {
        const std::lock_guard lock(mutex_);
        work_.push_back(std::move(work));
    }
    QCoreApplication::postEvent(this, wake.release());
}

bool EventLoopInbox::event(QEvent* event) {
    std::unique_lock lock(mutex_);
    if (event->type() != workCame) {
        lock.unlock();
        return QObject::event(event);
    }
    const std::function<void()> next = std::move(work_.front());
    work_.pop_front();
    lock.unlock();
    next();
    return true;
}

}  // namespace velmora
