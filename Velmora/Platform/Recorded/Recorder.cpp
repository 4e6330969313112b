// SPDX-License-Identifier: MIT
#include "Velmora/Platform/Recorded/Recorder.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "VelmoraCore/CharacterText.h"

namespace velmora {

namespace {

std::optional<Rect> finite(const std::optional<Rect>& rect) {
    return rect && rect->isFinite() ? rect : std::nullopt;
}

Recording::Candidate candidateOf(const RecognizedText& text) {
    const float confidence = std::isfinite(text.confidence()) ? text.confidence() : 0;
    Recording::Candidate candidate{text.string(), confidence, {}};
    const std::size_t count =
        std::min(CharacterText(candidate.text).count(), Recording::mostAnswers);
    for (std::size_t index = 0; index < count; ++index) {
        candidate.boxes.push_back(finite(text.boundingBox(index, index + 1)));
    }
    return candidate;
}

/// Lines whose place is no place are left out.
std::optional<std::vector<Recording::Line>> linesOf(
    const std::optional<std::vector<TextObservation>>& observations) {
    if (!observations) {
        return std::nullopt;
    }
    std::vector<Recording::Line> lines;
    for (const TextObservation& observation : *observations) {
        if (!observation.boundingBox.isFinite() || lines.size() >= Recording::mostAnswers) {
            continue;
        }
        Recording::Line line{observation.boundingBox, {}};
        for (const auto& candidate : observation.candidates) {
            if (candidate != nullptr && line.candidates.size() < Recording::mostAnswers) {
                line.candidates.push_back(candidateOf(*candidate));
            }
        }
        lines.push_back(std::move(line));
    }
    return lines;
}

std::optional<std::vector<Recording::Detected>> textsOf(
    const std::optional<std::vector<DetectedText>>& texts) {
    if (!texts) {
        return std::nullopt;
    }
    std::vector<Recording::Detected> result;
    for (const DetectedText& text : *texts) {
        if (!text.boundingBox.isFinite() || result.size() >= Recording::mostAnswers) {
            continue;
        }
        Recording::Detected detected{text.boundingBox, {}};
        for (const Rect& box : text.characterBoxes) {
            if (box.isFinite() && detected.characters.size() < Recording::mostAnswers) {
                detected.characters.push_back(box);
            }
        }
        result.push_back(std::move(detected));
    }
    return result;
}

}  // namespace

std::optional<Recorder::ElementIndex> Recorder::number(
    const AccessibilityElement::Pointer& element) {
    if (element == nullptr) {
        return std::nullopt;
    }
    const std::lock_guard lock(mutex_);
    for (ElementIndex index = 0; index < elements_.size(); ++index) {
        if (elements_[index]->equals(*element)) {
            return index;
        }
    }
    if (elements_.size() >= Recording::mostElements) {
        recording_.truncated = true;
        return std::nullopt;
    }
    elements_.push_back(element);
    recording_.elements.emplace_back();
    return elements_.size() - 1;
}

bool Recorder::hasRoom(std::size_t count) {
    if (count < Recording::mostAnswers) {
        return true;
    }
    recording_.truncated = true;
    return false;
}

void Recorder::capture(std::uint64_t display, const Rect& rect, const std::optional<Image>& image) {
    const std::lock_guard lock(mutex_);
    if (!hasRoom(recording_.captures.size())) {
        return;
    }
    const std::size_t pixels =
        image ? static_cast<std::size_t>(image->width()) * static_cast<std::size_t>(image->height())
              : 0;
    const bool fits = pixels_ + pixels <= Recording::mostPixels;
    recording_.captures.push_back({display, rect, fits ? image : std::nullopt});
    if (fits) {
        pixels_ += pixels;
    } else {
        recording_.truncated = true;
    }
}

void Recorder::recognition(const Image& image, std::optional<Point> point,
                           const std::optional<std::vector<TextObservation>>& lines) {
    Recording::Recognition entry{Recording::Picture::of(image), point, linesOf(lines)};
    const std::lock_guard lock(mutex_);
    if (hasRoom(recording_.recognitions.size())) {
        recording_.recognitions.push_back(std::move(entry));
    }
}

void Recorder::verification(const Image& image, Point point,
                            const std::optional<std::vector<TextObservation>>& lines) {
    Recording::Recognition entry{Recording::Picture::of(image), point, linesOf(lines)};
    const std::lock_guard lock(mutex_);
    if (hasRoom(recording_.verifications.size())) {
        recording_.verifications.push_back(std::move(entry));
    }
}

void Recorder::detection(const Image& image,
                         const std::optional<std::vector<DetectedText>>& texts) {
    Recording::Detection entry{Recording::Picture::of(image), textsOf(texts)};
    const std::lock_guard lock(mutex_);
    if (hasRoom(recording_.detections.size())) {
        recording_.detections.push_back(std::move(entry));
    }
}

std::optional<std::string> Recorder::kept(const std::optional<std::string>& text) {
    if (!text) {
        return std::nullopt;
    }
    const std::lock_guard lock(mutex_);
    if (text->size() > Recording::mostText || bytes_ + text->size() > 8 * Recording::mostText) {
        recording_.truncated = true;
        return std::nullopt;
    }
    bytes_ += text->size();
    return text;
}

Recording Recorder::recording() const {
    const std::lock_guard lock(mutex_);
    return recording_;
}

}  // namespace velmora
