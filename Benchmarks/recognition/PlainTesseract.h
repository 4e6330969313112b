// SPDX-License-Identifier: MIT
#pragma once

#include <memory>

#include "Velmora/Platform/TextRecognizer.h"

namespace velmora {

/// Tesseract as it comes: the whole capture at twice its size, its own lines, character boxes and
/// confidences, the right language given to it. What the other rows are compared with.
class PlainTesseract : public TextRecognizer {
  public:
    PlainTesseract();
    ~PlainTesseract() override;

    void setTraditional(bool traditional) { traditional_ = traditional; }

    std::optional<std::vector<TextObservation>> recognize(const Image& image,
                                                          std::optional<Point> pointOfInterest,
                                                          int candidateLimit) override;

  private:
    struct Implementation;
    std::unique_ptr<Implementation> implementation_;
    bool traditional_ = false;
};

}  // namespace velmora
