// SPDX-License-Identifier: MIT
#include "Velmora/Platform/Recognition/LineImage.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>

namespace velmora {

namespace {

constexpr double surround = 0.1;       ///< Of the line's height, taken along on both sides.
constexpr double extremeShare = 0.02;  ///< Of the pixels, ignored at either end of the range.
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

/// The part of the picture inside the area as black on white with full contrast; white where the
/// area goes beyond the picture.
GrayImage blackOnWhite(const GrayImage& picture, const PixelBox& area, const Range& range) {
    const int contrast = std::max(leastContrast, std::abs(range.paper - range.ink));
    const bool lightOnDark = range.ink > range.paper;
    GrayImage cut(area.width(), area.height());
    const PixelBox inside = area.clippedTo(picture.width(), picture.height());
    for (int y = inside.top; y < inside.bottom; ++y) {
        for (int x = inside.left; x < inside.right; ++x) {
            const int value = picture.at(x, y);
            const int depth = lightOnDark ? value - range.paper : range.paper - value;
            cut.at(x - area.left, y - area.top) =
                static_cast<std::uint8_t>(255 - std::clamp(depth * 255 / contrast, 0, 255));
        }
    }
    return cut;
}

}  // namespace

LineImage prepareLine(const GrayImage& picture, const PixelBox& line, double inkHeight) {
    LineImage result;
    if (line.clippedTo(picture.width(), picture.height()).isEmpty()) {
        return result;
    }
    result.scale = inkHeight / line.height();
    const int above =
        static_cast<int>(std::ceil((LineImage::height - inkHeight) / 2 / result.scale));
    const int beside = std::max(1, static_cast<int>(std::lround(surround * line.height())));
    const PixelBox area = line.grownBy(beside, above);
    const Range range = brightnessRange(picture, area.clippedTo(picture.width(), picture.height()));
    result.wasLightOnDark = range.ink > range.paper;
    result.sourceLeft = area.left;
    const GrayImage sized = scaled(blackOnWhite(picture, area, range), result.scale);
    const int margin = LineImage::margin;
    result.image = GrayImage(sized.width() + 2 * margin, LineImage::height, 255);
    const int shift = (sized.height() - LineImage::height) / 2;
    for (int y = 0; y < LineImage::height; ++y) {
        const int source = y + shift;
        if (source >= 0 && source < sized.height()) {
            std::copy_n(sized.row(source), sized.width(), result.image.row(y) + margin);
        }
    }
    return result;
}

GrayImage cutBlackOnWhite(const GrayImage& picture, const PixelBox& box, const PixelBox& line) {
    const PixelBox area = box.clippedTo(picture.width(), picture.height());
    const int around = std::max(2, line.height() / 4);
    const PixelBox context =
        line.grownBy(around, around).clippedTo(picture.width(), picture.height());
    if (area.isEmpty() || context.isEmpty()) {
        return {};
    }
    return blackOnWhite(picture, area, brightnessRange(picture, context));
}

}  // namespace velmora
