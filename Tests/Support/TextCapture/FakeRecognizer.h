// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <optional>
#include <vector>

#include "Velmora/Platform/TextRecognizer.h"

namespace velmora {

/// A recogniser that answers what the test says, and remembers what it was asked.
class FakeRecognizer final : public TextRecognizer {
  public:
    using Lines = std::optional<std::vector<TextObservation>>;

    Lines recognize(const Image& image, std::optional<Point> pointOfInterest,
                    int candidateLimit) override {
        sizes.push_back({static_cast<double>(image.width()), static_cast<double>(image.height())});
        points.push_back(pointOfInterest);
        limits.push_back(candidateLimit);
        return onRecognize ? onRecognize(image) : std::vector<TextObservation>();
    }

    Lines verify(const Image& image, const std::vector<TextObservation>& lines,
                 Point pointOfInterest, int candidateLimit) override {
        verifiedPoints.push_back(pointOfInterest);
        return onVerify ? onVerify(lines)
                        : TextRecognizer::verify(image, lines, pointOfInterest, candidateLimit);
    }

    RecognitionStatus status() const override { return currentStatus; }

    RecognitionStatus currentStatus;
    std::function<Lines(const Image&)> onRecognize;
    std::function<Lines(const std::vector<TextObservation>&)> onVerify;
    std::vector<Size> sizes;  ///< Of the pictures, in order.
    std::vector<std::optional<Point>> points;
    std::vector<int> limits;
    std::vector<Point> verifiedPoints;
};

}  // namespace velmora
