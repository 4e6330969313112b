// SPDX-License-Identifier: MIT
#pragma once

#include "Velmora/Platform/ScreenCapture.h"
#include "Velmora/Platform/Unavailable/Unavailability.h"

namespace velmora {

/// No pictures.
class UnavailableScreenCapture final : public ScreenCapture, public Unavailability {
  public:
    using Unavailability::Unavailability;

    std::vector<Display> displays() override { return {}; }
    std::optional<Image> capture(std::uint64_t /*displayId*/, const Rect& /*rect*/) override {
        return std::nullopt;
    }
};

}  // namespace velmora
