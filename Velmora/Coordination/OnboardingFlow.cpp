// SPDX-License-Identifier: MIT
#include "Velmora/Coordination/OnboardingFlow.h"

#include <utility>

namespace velmora {

OnboardingFlow::OnboardingFlow(OnboardingPresenting& window, ApplicationShell& shell,
                               std::function<void(bool)> complete)
    : window_(window), shell_(shell), complete_(std::move(complete)) {}

void OnboardingFlow::present(bool isFirstLaunch) {
    if (isOpen_) {
        window_.bringToFront();
        shell_.activateIgnoringOtherApplications();
        return;
    }
    shell_.setActivationPolicy(ApplicationShell::ActivationPolicy::regular);
    isOpen_ = true;
    window_.open(
        isFirstLaunch, isFirstLaunch ? "Continue in Menu Bar" : "Done", [this] { complete_(true); },
        [this, isFirstLaunch] { windowClosed(isFirstLaunch); });
    shell_.activateIgnoringOtherApplications();
}

void OnboardingFlow::windowClosed(bool isFirstLaunch) {
    if (isClosing_ || !isOpen_) {
        return;
    }
    if (isFirstLaunch) {
        complete_(false);
        return;
    }
    finish(false);
}

void OnboardingFlow::finish(bool closeWindow) {
    if (closeWindow && isOpen_) {
        isClosing_ = true;
        window_.close();
        isClosing_ = false;
    }
    isOpen_ = false;
    shell_.setActivationPolicy(ApplicationShell::ActivationPolicy::accessory);
}

}  // namespace velmora
