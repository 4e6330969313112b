// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "Velmora/Platform/RecognizedText.h"
#include "Velmora/Platform/TextRecognizer.h"

namespace velmora {

/// A reading with given boxes of its characters (image pixels, origin at the top left) in a picture
/// of a given size.
class FakeText final : public RecognizedText {
  public:
    /// `boxes` may hold fewer boxes than there are characters, even none.
    FakeText(std::string text, float confidence, std::vector<std::optional<Rect>> boxes,
             Size imageSize)
        : text_(std::move(text)),
          confidence_(confidence),
          boxes_(std::move(boxes)),
          imageSize_(imageSize) {}

    const std::string& string() const override { return text_; }
    float confidence() const override { return confidence_; }

    /// The union of the boxes of the range; nothing where one is missing or the range is empty.
    std::optional<Rect> boundingBox(std::size_t from, std::size_t to) const override;

    /// A line of square characters side by side, with one reading that knows their boxes.
    static TextObservation line(const std::string& text, float confidence, const Rect& rect,
                                Size imageSize);

    /// A line whose reading knows no boxes.
    static TextObservation lineWithoutBoxes(const std::string& text, float confidence,
                                            const Rect& rect, Size imageSize);

    /// A rectangle of image pixels in normalised coordinates.
    static Rect normalized(const Rect& rect, Size imageSize);

  private:
    std::string text_;
    float confidence_;
    std::vector<std::optional<Rect>> boxes_;
    Size imageSize_;
};

}  // namespace velmora
