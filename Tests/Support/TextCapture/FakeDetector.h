// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <vector>

#include "Velmora/Platform/TextRectangleDetector.h"

namespace velmora {

/// A detector that answers what the test says, and remembers what it was shown.
class FakeDetector final : public TextRectangleDetector {
  public:
    std::optional<std::vector<DetectedText>> detect(const Image& image) override {
        sizes.push_back({static_cast<double>(image.width()), static_cast<double>(image.height())});
        return onDetect ? onDetect(image) : std::vector<DetectedText>();
    }

    std::function<std::optional<std::vector<DetectedText>>(const Image&)> onDetect;
    std::vector<Size> sizes;
};

}  // namespace velmora
