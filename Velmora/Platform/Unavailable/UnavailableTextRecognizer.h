// SPDX-License-Identifier: MIT
#pragma once

#include "Velmora/Platform/TextRecognizer.h"
#include "Velmora/Platform/Unavailable/Unavailability.h"

namespace velmora {

/// No recognition.
class UnavailableTextRecognizer final : public TextRecognizer, public Unavailability {
  public:
    using Unavailability::Unavailability;

    std::optional<std::vector<TextObservation>> recognize(const Image& /*image*/,
                                                          std::optional<Point> /*pointOfInterest*/,
                                                          int /*candidateLimit*/) override {
        return std::nullopt;
    }

    RecognitionStatus status() const override {
        return {RecognitionStatus::Stage::unavailable, {}, {}, reason()};
    }
};

}  // namespace velmora
