// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <utility>

#include "Velmora/Platform/Recorded/Recorder.h"
#include "Velmora/Platform/TextRecognizer.h"

namespace velmora {

/// A recogniser whose answers are recorded.
class RecordingTextRecognizer final : public TextRecognizer {
  public:
    RecordingTextRecognizer(std::shared_ptr<TextRecognizer> recognizer,
                            std::shared_ptr<Recorder> recorder)
        : recognizer_(std::move(recognizer)), recorder_(std::move(recorder)) {}

    std::optional<std::vector<TextObservation>> recognize(const Image& image,
                                                          std::optional<Point> pointOfInterest,
                                                          int candidateLimit) override {
        auto lines = recognizer_->recognize(image, pointOfInterest, candidateLimit);
        recorder_->recognition(image, pointOfInterest, lines);
        return lines;
    }

    std::optional<std::vector<TextObservation>> verify(const Image& image,
                                                       const std::vector<TextObservation>& lines,
                                                       Point pointOfInterest,
                                                       int candidateLimit) override {
        auto verified = recognizer_->verify(image, lines, pointOfInterest, candidateLimit);
        recorder_->verification(image, pointOfInterest, verified);
        return verified;
    }

    RecognitionStatus status() const override { return recognizer_->status(); }

  private:
    std::shared_ptr<TextRecognizer> recognizer_;
    std::shared_ptr<Recorder> recorder_;
};

}  // namespace velmora
