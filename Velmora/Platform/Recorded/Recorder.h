// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

#include "Velmora/Platform/AccessibilityElement.h"
#include "Velmora/Platform/Recorded/Recording.h"
#include "Velmora/Platform/TextRecognizer.h"
#include "Velmora/Platform/TextRectangleDetector.h"

namespace velmora {

/// Collects what the recording decorators see, up to the limits of a recording; what is beyond them
/// is left out and marks the recording as truncated. Any thread.
class Recorder {
  public:
    using ElementIndex = Recording::ElementIndex;

    /// The number of an element, the same for equal elements; nothing for null and beyond the
    /// limit.
    std::optional<ElementIndex> number(const AccessibilityElement::Pointer& element);

    /// Changes the data of an element.
    template <typename Change>
    void element(ElementIndex index, const Change& change) {
        const std::lock_guard lock(mutex_);
        change(recording_.elements[index]);
    }

    /// Changes the recording.
    template <typename Change>
    void change(const Change& change) {
        const std::lock_guard lock(mutex_);
        change(recording_);
    }

    void capture(std::uint64_t display, const Rect& rect, const std::optional<Image>& image);
    void recognition(const Image& image, std::optional<Point> point,
                     const std::optional<std::vector<TextObservation>>& lines);
    void verification(const Image& image, Point point,
                      const std::optional<std::vector<TextObservation>>& lines);
    void detection(const Image& image, const std::optional<std::vector<DetectedText>>& texts);

    /// A text as it is kept: nothing where it is too long for what is left.
    std::optional<std::string> kept(const std::optional<std::string>& text);

    /// Adds an answer unless there are too many or the question has one already.
    template <typename Question, typename Answer>
    void add(Recording::Answers<Question, Answer>& answers, const Question& question,
             const std::optional<Answer>& answer) {
        for (const auto& known : answers) {
            if (known.first == question) {
                return;
            }
        }
        if (answers.size() >= Recording::mostAnswers) {
            recording_.truncated = true;
            return;
        }
        answers.emplace_back(question, answer);
    }

    Recording recording() const;

  private:
    bool hasRoom(std::size_t count);

    mutable std::mutex mutex_;
    Recording recording_;
    std::vector<AccessibilityElement::Pointer> elements_;
    std::size_t bytes_ = 0;
    std::size_t pixels_ = 0;
};

}  // namespace velmora
