// SPDX-License-Identifier: MIT
#include "Velmora/Platform/Recognition/InkCorrelation.h"

#include <algorithm>
#include <cmath>

#include "Velmora/Platform/Recognition/DotProduct.h"

namespace velmora {

namespace {

struct Moments {
    double sum = 0;
    double squares = 0;
    double middleX = 0;
    double middleY = 0;
};

Moments momentsOf(const std::vector<std::uint8_t>& darkness, int width) {
    Moments moments;
    for (std::size_t i = 0; i < darkness.size(); ++i) {
        const double value = darkness[i];
        const int row = static_cast<int>(i) / width;
        moments.sum += value;
        moments.squares += value * value;
        moments.middleX += value * static_cast<double>(static_cast<int>(i) % width);
        moments.middleY += value * static_cast<double>(row);
    }
    if (moments.sum > 0) {
        moments.middleX /= moments.sum;
        moments.middleY /= moments.sum;
    }
    return moments;
}

std::vector<std::uint8_t> darknessOf(const GrayImage& picture) {
    std::vector<std::uint8_t> darkness(picture.pixels().size());
    std::transform(picture.pixels().begin(), picture.pixels().end(), darkness.begin(),
                   [](std::uint8_t value) { return static_cast<std::uint8_t>(255 - value); });
    return darkness;
}

}  // namespace

InkCorrelation::InkCorrelation(const GrayImage& cell)
    : width_(cell.width()), height_(cell.height()), darkness_(darknessOf(cell)) {
    if (width_ > 0) {
        const Moments moments = momentsOf(darkness_, width_);
        sum_ = moments.sum;
        squares_ = moments.squares;
        middleX_ = moments.middleX;
        middleY_ = moments.middleY;
    }
}

float InkCorrelation::with(const GrayImage& drawing) const {
    if (drawing.isEmpty() || darkness_.empty()) {
        return 0;
    }
    const std::vector<std::uint8_t> drawn = darknessOf(drawing);
    const Moments moments = momentsOf(drawn, drawing.width());
    const double count = static_cast<double>(width_) * height_;
    const double cellVariance = squares_ - sum_ * sum_ / count;
    const double drawnVariance = moments.squares - moments.sum * moments.sum / count;
    if (cellVariance <= 0 || drawnVariance <= 0) {
        return 0;
    }
    const int startX = static_cast<int>(std::lround(middleX_ - moments.middleX));
    const int startY = static_cast<int>(std::lround(middleY_ - moments.middleY));
    double best = 0;
    for (int dy = startY - reach; dy <= startY + reach; ++dy) {
        for (int dx = startX - reach; dx <= startX + reach; ++dx) {
            const int fromX = std::max(0, dx);
            const int toX = std::min(width_, dx + drawing.width());
            double products = 0;
            for (int y = std::max(0, dy); y < std::min(height_, dy + drawing.height()); ++y) {
                const std::uint8_t* row =
                    darkness_.data() + static_cast<std::ptrdiff_t>(y) * width_;
                const std::uint8_t* other =
                    drawn.data() + static_cast<std::ptrdiff_t>(y - dy) * drawing.width();
                products +=
                    fromX < toX ? dotProduct(row + fromX, other + fromX - dx, toX - fromX) : 0;
            }
            best = std::max(best, products - sum_ * moments.sum / count);
        }
    }
    return static_cast<float>(best / std::sqrt(cellVariance * drawnVariance));
}

}  // namespace velmora
