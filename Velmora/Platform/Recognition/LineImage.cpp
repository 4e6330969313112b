// SPDX-License-Identifier: MIT
#include "Velmora/Platform/Recognition/LineImage.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>

namespace velmora {

namespace {

constexpr double surround = 0.18;       ///< Of the line's height, taken along on every side.
constexpr double extremeShare = 0.02;   ///< Of the pixels, ignored at either end of the range.
constexpr int leastContrast = 20;

struct Range {
    int paper = 255;
    int ink = 0;
};

/// The most frequent brightness is the paper; the ink lies at the end that is farther from it.
Range brightnessRange(const GrayImage& picture, const PixelBox& area) {
    std::array<int, 256> bins{};
    for (int y = area.top; y < area.bottom; ++y) {
        for (int x = area.left; x < area.right; ++x) {
            ++bins[picture.at(x, y)];
        }
    }
    int paper = 0;
    int best = -1;
    for (int value = 0; value < 256; ++value) {
        int score = 0;
        for (int k = std::max(0, value - 3); k <= std::min(255, value + 3); ++k) {
            score += bins[static_cast<std::size_t>(k)];
        }
        if (score > best) {
            best = score;
            paper = value;
        }
    }
    const double ignored = extremeShare * area.width() * area.height();
    int darkest = 0;
    for (int sum = 0; darkest < 255; ++darkest) {
        sum += bins[static_cast<std::size_t>(darkest)];
        if (sum > ignored) {
            break;
        }
    }
    int brightest = 255;
    for (int sum = 0; brightest > 0; --brightest) {
        sum += bins[static_cast<std::size_t>(brightest)];
        if (sum > ignored) {
            break;
        }
    }
    return {paper, brightest - paper > paper - darkest ? brightest : darkest};
}

}  // namespace

LineImage prepareLine(const GrayImage& picture, const PixelBox& line, double inkHeight) {
    const int around = std::max(2, static_cast<int>(std::lround(surround * line.height())));
    const PixelBox area =
        line.grownBy(around, around).clippedTo(picture.width(), picture.height());
    LineImage result;
    result.sourceLeft = area.left;
    result.sourceTop = area.top;
    if (area.isEmpty()) {
        return result;
    }
    const Range range = brightnessRange(picture, area);
    const int contrast = std::max(leastContrast, std::abs(range.paper - range.ink));
    result.wasLightOnDark = range.ink > range.paper;
    GrayImage cut(area.width(), area.height());
    for (int y = 0; y < cut.height(); ++y) {
        for (int x = 0; x < cut.width(); ++x) {
            const int value = picture.at(area.left + x, area.top + y);
            const int depth = result.wasLightOnDark ? value - range.paper : range.paper - value;
            cut.at(x, y) =
                static_cast<std::uint8_t>(255 - std::clamp(depth * 255 / contrast, 0, 255));
        }
    }
    result.scale = inkHeight / line.height();
    const GrayImage sized = scaled(cut, result.scale);
    const int margin = LineImage::margin;
    result.image = GrayImage(sized.width() + 2 * margin, sized.height() + 2 * margin, 255);
    for (int y = 0; y < sized.height(); ++y) {
        std::copy_n(sized.row(y), sized.width(), result.image.row(y + margin) + margin);
    }
    return result;
}

}  // namespace velmora
