// SPDX-License-Identifier: MIT
#pragma once

#include "Velmora/Platform/Unavailable/Unavailability.h"
#include "Velmora/Platform/WindowLocator.h"

namespace velmora {

/// No windows.
class UnavailableWindowLocator final : public WindowLocator, public Unavailability {
  public:
    using Unavailability::Unavailability;

    std::optional<WindowInfo> topmostWindowAt(Point /*nativePoint*/) override {
        return std::nullopt;
    }
    std::optional<WindowInfo> focusedWindow() override { return std::nullopt; }
};

}  // namespace velmora
