// SPDX-License-Identifier: MIT
#include "Velmora/Platform/Recognition/InkMask.h"

#include <algorithm>
#include <array>
#include <cstdlib>

namespace velmora {

namespace {

constexpr int tileSize = 40;
constexpr int tileOverlap = 12;
constexpr int binShift = 2;         ///< Brightness bins of four values.
constexpr int inkThreshold = 38;    ///< Difference from the background that makes ink.
constexpr int flatTolerance = 8;

constexpr std::size_t binCount = 256 >> binShift;
using Histogram = std::array<int, binCount>;

Histogram histogramOf(const GrayImage& image, const PixelBox& box) {
    Histogram bins{};
    for (int y = box.top; y < box.bottom; ++y) {
        const std::uint8_t* row = image.row(y);
        for (int x = box.left; x < box.right; ++x) {
            ++bins[static_cast<std::size_t>(row[x] >> binShift)];
        }
    }
    return bins;
}

/// The middle of the fullest bin, its neighbours counted half.
int modeOf(const Histogram& bins) {
    std::size_t best = 0;
    int bestScore = -1;
    for (std::size_t i = 0; i < binCount; ++i) {
        const int score = bins[i] * 2 + (i > 0 ? bins[i - 1] : 0) +
                          (i + 1 < binCount ? bins[i + 1] : 0);
        if (score > bestScore) {
            bestScore = score;
            best = i;
        }
    }
    return (static_cast<int>(best) << binShift) + (1 << (binShift - 1));
}

}  // namespace

std::vector<int> InkMask::columnCounts(const PixelBox& box) const {
    std::vector<int> counts(static_cast<std::size_t>(std::max(0, box.width())), 0);
    for (int y = box.top; y < box.bottom; ++y) {
        const std::uint8_t* source = row(y) + box.left;
        for (std::size_t x = 0; x < counts.size(); ++x) {
            counts[x] += source[x];
        }
    }
    return counts;
}

InkMask findInk(const GrayImage& image) {
    InkMask mask(image.width(), image.height());
    for (int top = 0; top < image.height(); top += tileSize) {
        for (int left = 0; left < image.width(); left += tileSize) {
            const PixelBox tile =
                PixelBox{left, top, left + tileSize, top + tileSize}.clippedTo(image.width(),
                                                                               image.height());
            const PixelBox around =
                tile.grownBy(tileOverlap, tileOverlap).clippedTo(image.width(), image.height());
            const int background = modeOf(histogramOf(image, around));
            for (int y = tile.top; y < tile.bottom; ++y) {
                const std::uint8_t* source = image.row(y);
                std::uint8_t* target = mask.row(y);
                for (int x = tile.left; x < tile.right; ++x) {
                    target[x] = std::abs(source[x] - background) > inkThreshold ? 1 : 0;
                }
            }
        }
    }
    return mask;
}

double backgroundFlatness(const GrayImage& image, const PixelBox& box) {
    const PixelBox area = box.clippedTo(image.width(), image.height());
    if (area.isEmpty()) {
        return 1;
    }
    const int mode = modeOf(histogramOf(image, area));
    long close = 0;
    for (int y = area.top; y < area.bottom; ++y) {
        const std::uint8_t* row = image.row(y);
        for (int x = area.left; x < area.right; ++x) {
            close += std::abs(row[x] - mode) <= flatTolerance ? 1 : 0;
        }
    }
    return static_cast<double>(close) /
           (static_cast<double>(area.width()) * static_cast<double>(area.height()));
}

}  // namespace velmora
