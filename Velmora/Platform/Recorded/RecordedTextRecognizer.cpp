// SPDX-License-Identifier: MIT
#include "Velmora/Platform/Recorded/RecordedTextRecognizer.h"

#include "Velmora/Platform/Recorded/RecordedAnswers.h"
#include "Velmora/Platform/Recorded/RecordedText.h"

namespace velmora {

namespace {

std::optional<std::vector<TextObservation>> observations(
    const std::optional<std::vector<Recording::Line>>& lines, int candidateLimit) {
    if (!lines) {
        return std::nullopt;
    }
    std::vector<TextObservation> result;
    for (const auto& line : *lines) {
        TextObservation observation{line.box, {}};
        for (const auto& candidate : line.candidates) {
            if (static_cast<int>(observation.candidates.size()) >= candidateLimit) {
                break;
            }
            observation.candidates.push_back(std::make_shared<RecordedText>(candidate));
        }
        result.push_back(std::move(observation));
    }
    return result;
}

bool isSamePoint(const std::optional<Point>& a, const std::optional<Point>& b) {
    return a && b ? isSameQuestion(*a, *b) : a.has_value() == b.has_value();
}

bool isSameSize(const Recording::Picture& a, const Recording::Picture& b) {
    return a.width == b.width && a.height == b.height;
}

/// Pixels and point count more than pixels alone, and those more than the size.
int likeness(const Recording::Recognition& recognition, const Recording::Picture& picture,
             const std::optional<Point>& point) {
    if (!isSameSize(recognition.picture, picture)) {
        return 0;
    }
    return 1 + (recognition.picture.hash == picture.hash ? 2 : 0) +
           (isSamePoint(recognition.point, point) ? 1 : 0);
}

}  // namespace

std::optional<std::vector<TextObservation>> RecordedTextRecognizer::recognize(
    const Image& image, std::optional<Point> pointOfInterest, int candidateLimit) {
    const Recording::Picture picture = Recording::Picture::of(image);
    const Recording::Recognition* best = nullptr;
    int bestLikeness = 0;
    for (const auto& recognition : recording_->recognitions) {
        const int value = likeness(recognition, picture, pointOfInterest);
        if (value > bestLikeness) {
            best = &recognition;
            bestLikeness = value;
        }
    }
    return best == nullptr ? std::nullopt : observations(best->lines, candidateLimit);
}

std::optional<std::vector<TextObservation>> RecordedTextRecognizer::verify(
    const Image& image, const std::vector<TextObservation>& lines, Point pointOfInterest,
    int candidateLimit) {
    for (const auto& verification : recording_->verifications) {
        if (isSamePoint(verification.point, pointOfInterest)) {
            return observations(verification.lines, candidateLimit);
        }
    }
    return TextRecognizer::verify(image, lines, pointOfInterest, candidateLimit);
}

}  // namespace velmora
