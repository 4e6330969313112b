// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <utility>

#include "Velmora/Platform/Recorded/Recording.h"
#include "Velmora/Platform/TextRecognizer.h"

namespace velmora {

/// The recognitions of a recording. A picture is found by its pixels, else by its size: enlarged
/// pictures may differ in single pixels from one build of the program to another.
class RecordedTextRecognizer final : public TextRecognizer {
  public:
    explicit RecordedTextRecognizer(std::shared_ptr<const Recording> recording)
        : recording_(std::move(recording)) {}

    std::optional<std::vector<TextObservation>> recognize(const Image& image,
                                                          std::optional<Point> pointOfInterest,
                                                          int candidateLimit) override;

    /// The recorded answer for this point, else the lines unchanged.
    std::optional<std::vector<TextObservation>> verify(const Image& image,
                                                       const std::vector<TextObservation>& lines,
                                                       Point pointOfInterest,
                                                       int candidateLimit) override;

  private:
    std::shared_ptr<const Recording> recording_;
};

}  // namespace velmora
