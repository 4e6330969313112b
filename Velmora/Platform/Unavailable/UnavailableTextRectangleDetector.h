// SPDX-License-Identifier: MIT
#pragma once

#include "Velmora/Platform/TextRectangleDetector.h"
#include "Velmora/Platform/Unavailable/Unavailability.h"

namespace velmora {

/// No detection.
class UnavailableTextRectangleDetector final : public TextRectangleDetector, public Unavailability {
  public:
    using Unavailability::Unavailability;

    std::optional<std::vector<DetectedText>> detect(const Image& /*image*/) override {
        return std::nullopt;
    }
};

}  // namespace velmora
