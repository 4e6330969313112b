// SPDX-License-Identifier: MIT
#pragma once

#include <QTimer>
#include <deque>
#include <functional>
#include <vector>

namespace velmora {

/// Work in short pieces for when the event loop has nothing else to do: one piece a turn, so that
/// whatever happens meanwhile waits no longer than a piece takes. What is left when this object
/// goes is dropped. Main thread.
class IdleSteps {
  public:
    IdleSteps();
    IdleSteps(const IdleSteps&) = delete;
    IdleSteps& operator=(const IdleSteps&) = delete;
    ~IdleSteps();

    /// After those that were added before.
    void add(std::vector<std::function<void()>> steps);

  private:
    void takeOne();

    std::deque<std::function<void()>> steps_;
    QTimer turn_;
};

}  // namespace velmora
