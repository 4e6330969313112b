// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <map>
#include <optional>
#include <utility>

#include "Velmora/Platform/Recognition/GrayImage.h"
#include "Velmora/Platform/Recognition/LineReader.h"

namespace velmora {

/// The form of one character regardless of its size, place and strength: its ink scaled into a
/// small square, mean 0 and length 1.
class CharacterShape {
  public:
    static constexpr int side = 24;

    /// The shape of the ink (dark on light) in a picture; nothing where there is no ink.
    static std::optional<CharacterShape> of(const GrayImage& picture);

    /// How alike two shapes are: 1 the same, 0 unrelated, below that each other's opposite.
    double similarity(const CharacterShape& other) const;

  private:
    std::array<float, static_cast<std::size_t>(side* side)> values_{};
};

/// Compares the ink of a character cell with the forms that fonts give to characters. Keeps what
/// it has drawn; not for several threads at once.
class ShapeMatcher {
  public:
    explicit ShapeMatcher(LineReader& reader) : reader_(reader) {}

    /// The similarity of the ink to a character; nothing where no font has it.
    std::optional<double> similarity(const CharacterShape& ink, char32_t character);

  private:
    static constexpr std::size_t mostShapes = 3000;

    LineReader& reader_;
    std::map<std::pair<char32_t, ScriptModel>, std::optional<CharacterShape>> shapes_;
};

}  // namespace velmora
