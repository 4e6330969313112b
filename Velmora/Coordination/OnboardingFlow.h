// SPDX-License-Identifier: MIT
#pragma once

#include <functional>

#include "Velmora/Coordination/OnboardingPresenting.h"
#include "Velmora/Platform/ApplicationShell.h"

namespace velmora {

/// When the onboarding window is there, and how the program stands in the desktop meanwhile: as a
/// regular program while it is open, as an agent otherwise. Main thread.
class OnboardingFlow {
  public:
    /// `complete` is called where the view's own buttons, or closing the window of a first launch,
    /// complete onboarding; it is told whether the window is still to be closed. The references
    /// outlive this object.
    OnboardingFlow(OnboardingPresenting& window, ApplicationShell& shell,
                   std::function<void(bool closeWindow)> complete);

    /// Opens the window, or brings the open one to the front.
    void present(bool isFirstLaunch);

    /// Ends onboarding: closes the window where that is asked for and there is one, forgets it, and
    /// makes the program an agent again.
    void finish(bool closeWindow);

    bool isOpen() const { return isOpen_; }

  private:
    void windowClosed(bool isFirstLaunch);

    OnboardingPresenting& window_;
    ApplicationShell& shell_;
    std::function<void(bool)> complete_;
    bool isOpen_ = false;
    bool isClosing_ = false;  ///< True only while this object itself closes the window.
};

}  // namespace velmora
