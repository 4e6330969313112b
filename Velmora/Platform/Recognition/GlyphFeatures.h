// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>

#include "Velmora/Platform/Recognition/GrayImage.h"

namespace velmora {

/// What a character's strokes are like in each part of it: how much edge runs in which of eight
/// directions, in six by six overlapping regions of its ink. Independent of size, place and
/// strength, and tolerant of strokes that fonts put a little elsewhere, which makes it the measure
/// for finding the characters that ink may be. Gradient direction histograms are the classic
/// features of Han character recognition (C.-L. Liu, "Normalization-cooperated gradient feature
/// extraction for handwritten character recognition", 2007).
class GlyphFeatures {
  public:
    static constexpr std::size_t regions = 6;
    static constexpr std::size_t directions = 8;
    static constexpr std::size_t size = regions * regions * directions;

    using Values = std::array<std::int8_t, size>;

    /// The features of a picture's ink (black on white); nothing where there is none.
    static std::optional<GlyphFeatures> of(const GrayImage& picture);

    /// From values that `values` gave once.
    explicit GlyphFeatures(const Values& values) : values_(values) {}

    const Values& values() const { return values_; }

    /// How alike two characters are: 1 the same, 0 nothing in common. `other` are values of
    /// features, `size` of them.
    float similarity(std::span<const std::int8_t, size> other) const;

  private:
    GlyphFeatures() = default;

    Values values_{};
};

}  // namespace velmora
