// SPDX-License-Identifier: MIT
#pragma once

#include <QCoreApplication>
#include <functional>
#include <utility>

#include "Velmora/Platform/Compositor.h"

namespace velmora::test {

/// A compositor that comes and goes as the test says.
class FakeCompositor : public Compositor {
  public:
    bool isCompositing() const override { return compositing_; }
    /// The next turn of the event loop brings the answer.
    void whenAnswered(std::function<void()> step) override {
        QMetaObject::invokeMethod(qApp, std::move(step), Qt::QueuedConnection);
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
};

}  // namespace velmora::test
