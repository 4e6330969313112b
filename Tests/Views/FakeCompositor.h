// SPDX-License-Identifier: MIT
#pragma once

#include <QCoreApplication>
#include <cstddef>
#include <functional>
#include <utility>
#include <vector>

#include "Velmora/Platform/Compositor.h"

namespace velmora::test {

/// A compositor that comes and goes as the test says.
class FakeCompositor : public Compositor {
  public:
    bool isCompositing() const override { return compositing_; }
    /// The next turn of the event loop brings the answer, unless answers are held.
    void whenAnswered(std::function<void()> step) override {
        if (isHolding_) {
            held_.push_back(std::move(step));
        } else {
            QMetaObject::invokeMethod(qApp, std::move(step), Qt::QueuedConnection);
        }
    }

    void holdAnswers() { isHolding_ = true; }
    std::size_t heldAnswers() const { return held_.size(); }
    void giveAnswers() {
        isHolding_ = false;
        for (const auto& step : std::exchange(held_, {})) {
            step();
        }
    }

    void observe(Observer observer) override { observer_ = std::move(observer); }

    void set(bool compositing) {
        compositing_ = compositing;
        if (observer_) {
            observer_(compositing);
        }
    }
    bool isObserved() const { return static_cast<bool>(observer_); }

  private:
    bool compositing_ = true;
    Observer observer_;
    bool isHolding_ = false;
    std::vector<std::function<void()>> held_;
};

}  // namespace velmora::test
