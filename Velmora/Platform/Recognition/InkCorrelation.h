// SPDX-License-Identifier: MIT
#pragma once

#include <vector>

#include "Velmora/Platform/Recognition/GrayImage.h"

namespace velmora {

/// Compares a cut-out character pixel by pixel with drawn ones (all black on white).
class InkCorrelation {
  public:
    /// How far a drawn character may be off the place where both centres of ink meet, in pixels.
    static constexpr int reach = 2;

    explicit InkCorrelation(const GrayImage& cell);

    /// Pearson's correlation of the cell's brightness with the drawing in its best place: 1 where
    /// they are the same, about 0 where they are unrelated; 0 where either has no ink.
    float with(const GrayImage& drawing) const;

  private:
    int width_;
    int height_;
    std::vector<std::uint8_t> darkness_;  ///< Rows of the cell.
    double sum_ = 0;
    double squares_ = 0;
    double middleX_ = 0;
    double middleY_ = 0;
};

}  // namespace velmora
