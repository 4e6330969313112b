// SPDX-License-Identifier: MIT
#pragma once

#include "Velmora/Coordination/Speaking.h"
#include "Velmora/Platform/Unavailable/Unavailability.h"

namespace velmora {

/// Says nothing.
class UnavailableSpeech final : public Speaking, public Unavailability {
  public:
    using Unavailability::Unavailability;

    void speak(const std::string& /*text*/) override {}
};

}  // namespace velmora
