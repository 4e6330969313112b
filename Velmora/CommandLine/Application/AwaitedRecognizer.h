// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include "Velmora/Platform/TextRecognizer.h"

namespace velmora {

/// A recogniser that is made ready when it is first needed: a command that runs once waits for the
/// languages where the running program would go on without them.
class AwaitedRecognizer final : public TextRecognizer {
  public:
    /// `makeReady` is called once, before the first recognition.
    AwaitedRecognizer(std::shared_ptr<TextRecognizer> recognizer, std::function<void()> makeReady);

    std::optional<std::vector<TextObservation>> recognize(const Image& image,
                                                          std::optional<Point> pointOfInterest,
                                                          int candidateLimit) override;
    std::optional<std::vector<TextObservation>> verify(const Image& image,
                                                       const std::vector<TextObservation>& lines,
                                                       Point pointOfInterest,
                                                       int candidateLimit) override;
    RecognitionStatus status() const override { return recognizer_->status(); }

  private:
    TextRecognizer& ready();

    std::shared_ptr<TextRecognizer> recognizer_;
    std::function<void()> makeReady_;
};

}  // namespace velmora
