// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <deque>
#include <functional>
#include <mutex>

namespace velmora {

/// Work for the thread whose event loop this object lives in: pieces run there in the order in
/// which they came, each in a turn of its own. The event loop is only woken; the work itself is
/// handed over under a lock of our own, which the thread sanitizer follows where it does not follow
/// the toolkit. Work that is still waiting when this object goes is dropped.
class EventLoopInbox final : public QObject {
  public:
    /// Callable from any thread.
    void post(std::function<void()> work);

    bool event(QEvent* event) override;

  private:
    std::mutex mutex_;
    std::deque<std::function<void()>> work_;
};

}  // namespace velmora
