// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <optional>
#include <string>

#include "Velmora/Platform/Geometry.h"

namespace velmora {

/// One reading of a recognised line. Shared and immutable; callable from any thread.
class RecognizedText {
  public:
    using Pointer = std::shared_ptr<const RecognizedText>;

    virtual ~RecognizedText() = default;

    virtual const std::string& string() const = 0;  ///< Valid UTF-8.
    virtual float confidence() const = 0;           ///< 0…1; at 0.99 and above it is right.

    /// The box of the characters from..<to (grapheme clusters of the string) in normalised image
    /// coordinates (0…1, origin at the bottom left); nothing where it is unknown.
    virtual std::optional<Rect> boundingBox(std::size_t from, std::size_t to) const = 0;
};

}  // namespace velmora
