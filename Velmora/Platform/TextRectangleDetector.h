// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <vector>

#include "Velmora/Platform/Geometry.h"
#include "Velmora/Platform/Image.h"

namespace velmora {

/// A place where text seems to stand; boxes in normalised image coordinates (0…1, origin at the
/// bottom left).
struct DetectedText {
    Rect boundingBox;
    std::vector<Rect> characterBoxes;
};

/// Finds where text is without reading it. Used on the extraction queue.
class TextRectangleDetector {
  public:
    virtual ~TextRectangleDetector() = default;

    /// Nothing where detection failed.
    virtual std::optional<std::vector<DetectedText>> detect(const Image& image) = 0;
};

}  // namespace velmora
