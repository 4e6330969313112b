// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <utility>

#include "Velmora/Platform/RecognizedText.h"

namespace velmora {

/// A reading that gives the same box (normalised) for every range, also for those that it does not
/// have.
class GenerousText final : public RecognizedText {
  public:
    GenerousText(std::string text, const Rect& box) : text_(std::move(text)), box_(box) {}

    const std::string& string() const override { return text_; }
    float confidence() const override { return 1; }
    std::optional<Rect> boundingBox(std::size_t, std::size_t) const override { return box_; }

  private:
    std::string text_;
    Rect box_;
};

}  // namespace velmora
