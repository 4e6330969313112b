// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <utility>

#include "Velmora/Platform/Recorded/Recorder.h"
#include "Velmora/Platform/TextRectangleDetector.h"

namespace velmora {

/// A detector whose answers are recorded.
class RecordingTextRectangleDetector final : public TextRectangleDetector {
  public:
    RecordingTextRectangleDetector(std::shared_ptr<TextRectangleDetector> detector,
                                   std::shared_ptr<Recorder> recorder)
        : detector_(std::move(detector)), recorder_(std::move(recorder)) {}

    std::optional<std::vector<DetectedText>> detect(const Image& image) override {
        auto texts = detector_->detect(image);
        recorder_->detection(image, texts);
        return texts;
    }

  private:
    std::shared_ptr<TextRectangleDetector> detector_;
    std::shared_ptr<Recorder> recorder_;
};

}  // namespace velmora
