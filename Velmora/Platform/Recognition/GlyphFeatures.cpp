// SPDX-License-Identifier: MIT
#include "Velmora/Platform/Recognition/GlyphFeatures.h"

#include <algorithm>
#include <cmath>
#include <vector>

#include "Velmora/Platform/Recognition/DotProduct.h"

namespace velmora {

namespace {

constexpr int inkBelow = 160;
constexpr int side = 30;        ///< Of the square that the ink is scaled into.
constexpr int border = 3;       ///< White around the ink in it.
constexpr float scale = 360;    ///< Of unit vectors into signed bytes.
constexpr double least = 1e-6;  ///< Below this there is nothing to compare.

using Square = std::array<std::array<float, side>, side>;

std::optional<PixelBox> inkBoxOf(const GrayImage& picture) {
    PixelBox box{picture.width(), picture.height(), 0, 0};
    for (int y = 0; y < picture.height(); ++y) {
        const std::uint8_t* row = picture.row(y);
        for (int x = 0; x < picture.width(); ++x) {
            if (row[x] < inkBelow) {
                box = box.united({x, y, x + 1, y + 1});
            }
        }
    }
    return box.isEmpty() ? std::nullopt : std::optional(box);
}

/// The pixels and their shares that make up each column (or row) of the square.
struct Sampling {
    std::array<int, side> first{};
    std::array<std::vector<float>, side> shares;
};

/// Each sample takes in the breadth of one sample or one pixel, whichever is more.
Sampling samplingOf(double begin, double step, int limit) {
    Sampling sampling;
    const double half = std::max(step, 1.0) / 2;
    for (int i = 0; i < side; ++i) {
        const auto at = static_cast<std::size_t>(i);
        const double middle = begin + (i + 0.5) * step;
        const int first = std::max(0, static_cast<int>(std::floor(middle - half)));
        sampling.first[at] = first;
        for (int p = first; p < limit && p < middle + half; ++p) {
            const double covered =
                std::min<double>(middle + half, p + 1) - std::max<double>(middle - half, p);
            sampling.shares[at].push_back(static_cast<float>(covered / (2 * half)));
        }
    }
    return sampling;
}

Square normalized(const GrayImage& picture, const PixelBox& box) {
    // One scale for both directions, so that 一 stays flat.
    const double extent = std::max(box.width(), box.height());
    const double step = extent / (side - 2 * border);
    const double left = (box.left + box.right) / 2.0 - step * side / 2;
    const double top = (box.top + box.bottom) / 2.0 - step * side / 2;
    const Sampling columns = samplingOf(left, step, picture.width());
    const Sampling rows = samplingOf(top, step, picture.height());
    Square square{};
    std::vector<float> line(static_cast<std::size_t>(picture.width()));
    for (std::size_t y = 0; y < side; ++y) {
        std::fill(line.begin(), line.end(), 0.0F);
        for (std::size_t k = 0; k < rows.shares[y].size(); ++k) {
            const std::uint8_t* source = picture.row(rows.first[y] + static_cast<int>(k));
            for (std::size_t x = 0; x < line.size(); ++x) {
                line[x] += rows.shares[y][k] * static_cast<float>(255 - source[x]);
            }
        }
        for (std::size_t x = 0; x < side; ++x) {
            for (std::size_t k = 0; k < columns.shares[x].size(); ++k) {
                square[y][x] +=
                    columns.shares[x][k] * line[static_cast<std::size_t>(columns.first[x]) + k];
            }
        }
    }
    return square;
}

/// Each gradient is split between the two nearest of the eight directions, as vectors add up.
void splitByDirection(float dx, float dy, std::array<float, GlyphFeatures::directions>& parts) {
    constexpr float diagonal = 1.41421356F;
    parts.fill(0);
    const float ax = std::fabs(dx);
    const float ay = std::fabs(dy);
    const float straight = std::fabs(ax - ay);
    const float slanted = std::min(ax, ay) * diagonal;
    const std::size_t axis = ax > ay ? (dx > 0 ? 0 : 4) : (dy > 0 ? 2 : 6);
    const std::size_t corner = dx > 0 ? (dy > 0 ? 1 : 7) : (dy > 0 ? 3 : 5);
    parts[axis] = straight;
    parts[corner] = slanted;
}

/// How much a column (or row) of the square belongs to each region: regions overlap by half.
std::array<std::array<float, side>, GlyphFeatures::regions> regionWeights() {
    std::array<std::array<float, side>, GlyphFeatures::regions> weights{};
    const double pitch = static_cast<double>(side) / GlyphFeatures::regions;
    for (std::size_t r = 0; r < weights.size(); ++r) {
        const double middle = (static_cast<double>(r) + 0.5) * pitch;
        for (std::size_t i = 0; i < side; ++i) {
            const double distance = std::fabs(static_cast<double>(i) + 0.5 - middle) / pitch;
            weights[r][i] = static_cast<float>(std::exp(-distance * distance * 2));
        }
    }
    return weights;
}

}  // namespace

std::optional<GlyphFeatures> GlyphFeatures::of(const GrayImage& picture) {
    const std::optional<PixelBox> box = inkBoxOf(picture);
    if (!box) {
        return std::nullopt;
    }
    static const auto weights = regionWeights();
    const Square square = normalized(picture, *box);
    std::array<float, size> sums{};
    std::array<float, directions> parts{};
    // Rows are gathered first, so that the columns' weights are applied once for six regions.
    for (std::size_t y = 1; y + 1 < side; ++y) {
        std::array<std::array<float, directions>, regions> row{};
        for (std::size_t x = 1; x + 1 < side; ++x) {
            const float dx = square[y][x + 1] - square[y][x - 1];
            const float dy = square[y + 1][x] - square[y - 1][x];
            if (dx == 0 && dy == 0) {
                continue;
            }
            splitByDirection(dx, dy, parts);
            for (std::size_t r = 0; r < regions; ++r) {
                for (std::size_t d = 0; d < directions; ++d) {
                    row[r][d] += weights[r][x] * parts[d];
                }
            }
        }
        for (std::size_t down = 0; down < regions; ++down) {
            for (std::size_t across = 0; across < regions; ++across) {
                for (std::size_t d = 0; d < directions; ++d) {
                    sums[(down * regions + across) * directions + d] +=
                        weights[down][y] * row[across][d];
                }
            }
        }
    }
    double squares = 0;
    for (float& sum : sums) {
        sum = std::sqrt(sum);  // Evens out the strengths of strokes.
        squares += static_cast<double>(sum) * sum;
    }
    if (squares < least) {
        return std::nullopt;
    }
    const float factor = scale / static_cast<float>(std::sqrt(squares));
    GlyphFeatures features;
    for (std::size_t i = 0; i < size; ++i) {
        features.values_[i] =
            static_cast<std::int8_t>(std::min(127.0F, std::round(sums[i] * factor)));
    }
    return features;
}

float GlyphFeatures::similarity(std::span<const std::int8_t, size> other) const {
    const int sum = dotProduct(values_.data(), other.data(), static_cast<int>(size));
    return static_cast<float>(sum) / (scale * scale);
}

}  // namespace velmora
