// SPDX-License-Identifier: MIT
#pragma once

#include "Velmora/Platform/TextRectangleDetector.h"

namespace velmora {

/// Finds lines of writing, and where their characters seem to stand, from the ink alone. Needs no
/// language data and no worker.
class LineDetector : public TextRectangleDetector {
  public:
    std::optional<std::vector<DetectedText>> detect(const Image& image) override;
};

}  // namespace velmora
