// SPDX-License-Identifier: MIT
#pragma once

#include <functional>

#include "Velmora/Platform/Compositor.h"
#include "Velmora/Platform/Unavailable/Unavailability.h"

namespace velmora {

/// No blending.
class UnavailableCompositor final : public Compositor, public Unavailability {
  public:
    using Unavailability::Unavailability;

    bool isCompositing() const override { return false; }
    void whenAnswered(std::function<void()> step) override { step(); }
    void observe(Observer /*observer*/) override {}
};

}  // namespace velmora
