// SPDX-License-Identifier: MIT
#pragma once

#include "Velmora/Coordination/HighlightPresenting.h"
#include "Velmora/Platform/Unavailable/Unavailability.h"

namespace velmora {

/// No outline.
class UnavailableHighlight final : public HighlightPresenting, public Unavailability {
  public:
    using Unavailability::Unavailability;

    void show(const Rect& /*rect*/) override {}
    void orderOut() override {}
};

}  // namespace velmora
