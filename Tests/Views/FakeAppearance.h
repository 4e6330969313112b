// SPDX-License-Identifier: MIT
#pragma once

#include <utility>

#include "Velmora/Platform/DesktopAppearance.h"

namespace velmora::test {

/// A desktop whose preference the test states.
class FakeAppearance : public DesktopAppearance {
  public:
    std::optional<ColorScheme> colorScheme() const override { return scheme_; }
    void observe(Observer observer) override { observer_ = std::move(observer); }

    void set(std::optional<ColorScheme> scheme) {
        scheme_ = scheme;
        if (observer_) {
            observer_(scheme);
        }
    }
    bool isObserved() const { return static_cast<bool>(observer_); }

  private:
    std::optional<ColorScheme> scheme_ = ColorScheme::light;
    Observer observer_;
};

}  // namespace velmora::test
