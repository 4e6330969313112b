// SPDX-License-Identifier: MIT
#pragma once

#include "Velmora/Coordination/OnboardingPresenting.h"
#include "Velmora/Platform/Unavailable/Unavailability.h"

namespace velmora {

/// No onboarding window.
class UnavailableOnboarding final : public OnboardingPresenting, public Unavailability {
  public:
    using Unavailability::Unavailability;

    void open(bool /*isFirstLaunch*/, const std::string& /*completionTitle*/,
              std::function<void()> /*onComplete*/, std::function<void()> /*onClose*/) override {}
    void bringToFront() override {}
    void close() override {}
};

}  // namespace velmora
