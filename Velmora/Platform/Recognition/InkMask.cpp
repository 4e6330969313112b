// SPDX-License-Identifier: MIT
#include "Velmora/Platform/Recognition/InkMask.h"

#include <algorithm>
#include <array>
#include <cstdlib>

namespace velmora {

namespace {

constexpr int tileSize = 40;
constexpr int tileOverlap = 12;
constexpr int binShift = 2;        ///< Brightness bins of four values.
constexpr int leastInkDepth = 38;  ///< Difference from the background that makes ink.
constexpr double inkShare = 0.3;   ///< Of the deepest ink around; less is a frame or a shadow.
constexpr int deepestIgnored = 8;  ///< Pixels that may be deeper, such as a cursor's edge.
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
        const int score =
            bins[i] * 2 + (i > 0 ? bins[i - 1] : 0) + (i + 1 < binCount ? bins[i + 1] : 0);
        if (score > bestScore) {
            bestScore = score;
            best = i;
        }
    }
    return (static_cast<int>(best) << binShift) + (1 << (binShift - 1));
}

/// How far a pixel must be from the background: the writing itself sets the measure, so that faint
/// frames around strong writing do not count.
int inkDepth(const Histogram& bins, int background) {
    const auto depthOf = [background](std::size_t bin) {
        return std::abs((static_cast<int>(bin) << binShift) - background);
    };
    std::array<int, 256> depths{};
    for (std::size_t bin = 0; bin < binCount; ++bin) {
        depths[static_cast<std::size_t>(std::min(255, depthOf(bin)))] += bins[bin];
    }
    int deepest = 255;
    for (int seen = 0; deepest > 0; --deepest) {
        seen += depths[static_cast<std::size_t>(deepest)];
        if (seen > deepestIgnored) {
            break;
        }
    }
    return std::max(leastInkDepth, static_cast<int>(inkShare * deepest));
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
            const PixelBox tile = PixelBox{left, top, left + tileSize, top + tileSize}.clippedTo(
                image.width(), image.height());
            const PixelBox around =
                tile.grownBy(tileOverlap, tileOverlap).clippedTo(image.width(), image.height());
            const Histogram bins = histogramOf(image, around);
            const int background = modeOf(bins);
            const int depth = inkDepth(bins, background);
            for (int y = tile.top; y < tile.bottom; ++y) {
                const std::uint8_t* source = image.row(y);
                std::uint8_t* target = mask.row(y);
                for (int x = tile.left; x < tile.right; ++x) {
                    target[x] = std::abs(source[x] - background) > depth ? 1 : 0;
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

double flatnessOfTwoSurfaces(const GrayImage& image, const PixelBox& box) {
    const PixelBox area = box.clippedTo(image.width(), image.height());
    if (area.isEmpty()) {
        return 1;
    }
    Histogram bins = histogramOf(image, area);
    long close = 0;
    for (int surface = 0; surface < 2; ++surface) {
        const int mode = modeOf(bins);
        for (std::size_t bin = 0; bin < binCount; ++bin) {
            const int value = (static_cast<int>(bin) << binShift) + (1 << (binShift - 1));
            if (std::abs(value - mode) <= flatTolerance) {
                close += bins[bin];
                bins[bin] = 0;
            }
        }
    }
    return static_cast<double>(close) /
           (static_cast<double>(area.width()) * static_cast<double>(area.height()));
}

}  // namespace velmora
