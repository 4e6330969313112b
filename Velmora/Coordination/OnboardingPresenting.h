// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <string>

namespace velmora {

/// Makes and closes the onboarding window. Main thread. The model decides when.
class OnboardingPresenting {
  public:
    virtual ~OnboardingPresenting() = default;

    /// Makes the window, centres it, shows it and gives it the focus. `onComplete` is called by
    /// the view's own buttons, `onClose` whenever the window closes, by whomever.
    virtual void open(bool isFirstLaunch, const std::string& completionTitle,
                      std::function<void()> onComplete, std::function<void()> onClose) = 0;

    /// Brings the open window to the front and gives it the focus.
    virtual void bringToFront() = 0;

    /// Closes the open window (which calls `onClose`) and forgets it.
    virtual void close() = 0;
};

}  // namespace velmora
