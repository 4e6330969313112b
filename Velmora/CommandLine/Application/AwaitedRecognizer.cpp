// SPDX-License-Identifier: MIT
#include "Velmora/CommandLine/Application/AwaitedRecognizer.h"

#include <utility>

namespace velmora {

AwaitedRecognizer::AwaitedRecognizer(std::shared_ptr<TextRecognizer> recognizer,
                                     std::function<void()> makeReady)
    : recognizer_(std::move(recognizer)), makeReady_(std::move(makeReady)) {}

std::optional<std::vector<TextObservation>> AwaitedRecognizer::recognize(
    const Image& image, std::optional<Point> pointOfInterest, int candidateLimit) {
    return ready().recognize(image, pointOfInterest, candidateLimit);
}

std::optional<std::vector<TextObservation>> AwaitedRecognizer::verify(
    const Image& image, const std::vector<TextObservation>& lines, Point pointOfInterest,
    int candidateLimit) {
    return ready().verify(image, lines, pointOfInterest, candidateLimit);
}

TextRecognizer& AwaitedRecognizer::ready() {
    if (const auto makeReady = std::exchange(makeReady_, nullptr)) {
        makeReady();
    }
    return *recognizer_;
}

}  // namespace velmora
