// SPDX-License-Identifier: MIT
#pragma once

#include <vector>

#include "Velmora/Platform/Recognition/PixelBox.h"
#include "Velmora/Platform/Recognition/PlacedCharacter.h"
#include "Velmora/Platform/RecognizedText.h"

namespace velmora {

/// A reading of a line with a box for each of its characters.
class ReadText : public RecognizedText {
  public:
    /// `line` is the line's box and the cells its columns, both in pixels of an image of this size.
    ReadText(const PlacedLine& characters, float confidence, const PixelBox& line, int imageWidth,
             int imageHeight);

    const std::string& string() const override { return text_; }
    float confidence() const override { return confidence_; }
    std::optional<Rect> boundingBox(std::size_t from, std::size_t to) const override;

  private:
    std::string text_;
    float confidence_;
    Rect line_;                         ///< Normalised, origin at the bottom left.
    std::vector<CharacterCell> cells_;  ///< One for each character (grapheme cluster).
    double imageWidth_;
};

/// A box of pixels (origin at the top left) in normalised image coordinates (bottom left).
Rect normalizedBox(const PixelBox& box, int imageWidth, int imageHeight);

}  // namespace velmora
