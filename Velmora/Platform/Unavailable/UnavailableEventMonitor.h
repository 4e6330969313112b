// SPDX-License-Identifier: MIT
#pragma once

#include "Velmora/Platform/EventMonitor.h"
#include "Velmora/Platform/Unavailable/Unavailability.h"

namespace velmora {

/// No events.
class UnavailableEventMonitor final : public EventMonitor, public Unavailability {
  public:
    using Unavailability::Unavailability;

    Token addGlobalMonitor(EventMask /*mask*/, Handler /*handler*/) override { return 0; }
    Token addLocalMonitor(EventMask /*mask*/, Handler /*handler*/) override { return 0; }
    void removeMonitor(Token /*token*/) override {}
    Point mouseLocation() override { return {}; }
    ModifierFlags modifierFlags() override { return {}; }
};

}  // namespace velmora
