// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <utility>

#include "Velmora/Platform/RecognizedText.h"
#include "Velmora/Platform/Recorded/Recording.h"

namespace velmora {

/// A reading from a recording. The box of a range is the union of its characters' boxes.
class RecordedText final : public RecognizedText {
  public:
    explicit RecordedText(Recording::Candidate candidate) : candidate_(std::move(candidate)) {}

    const std::string& string() const override { return candidate_.text; }
    float confidence() const override { return candidate_.confidence; }

    std::optional<Rect> boundingBox(std::size_t from, std::size_t to) const override {
        std::optional<Rect> all;
        for (std::size_t index = from; index < to; ++index) {
            if (index >= candidate_.boxes.size() || !candidate_.boxes[index]) {
                return std::nullopt;
            }
            all = all ? all->united(*candidate_.boxes[index]) : *candidate_.boxes[index];
        }
        return all;
    }

  private:
    Recording::Candidate candidate_;
};

}  // namespace velmora
