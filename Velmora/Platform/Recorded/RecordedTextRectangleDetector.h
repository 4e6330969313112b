// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <utility>

#include "Velmora/Platform/Recorded/Recording.h"
#include "Velmora/Platform/TextRectangleDetector.h"

namespace velmora {

/// The detections of a recording, for exactly the pictures that were shown then.
class RecordedTextRectangleDetector final : public TextRectangleDetector {
  public:
    explicit RecordedTextRectangleDetector(std::shared_ptr<const Recording> recording)
        : recording_(std::move(recording)) {}

    std::optional<std::vector<DetectedText>> detect(const Image& image) override {
        const Recording::Picture picture = Recording::Picture::of(image);
        for (const auto& detection : recording_->detections) {
            if (detection.picture == picture && detection.texts) {
                std::vector<DetectedText> texts;
                for (const auto& text : *detection.texts) {
                    texts.push_back({text.box, text.characters});
                }
                return texts;
            }
        }
        return std::nullopt;
    }

  private:
    std::shared_ptr<const Recording> recording_;
};

}  // namespace velmora
