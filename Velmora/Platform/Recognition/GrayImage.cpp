// SPDX-License-Identifier: MIT
#include "Velmora/Platform/Recognition/GrayImage.h"

#include <algorithm>
#include <cmath>

namespace velmora {

namespace {

/// The source positions and weights that make up each target pixel along one axis.
struct AxisWeights {
    std::vector<int> first;
    std::vector<std::vector<float>> weights;
};

AxisWeights interpolationWeights(int source, int target, double factor) {
    AxisWeights axis;
    for (int i = 0; i < target; ++i) {
        const double at = std::clamp((i + 0.5) / factor - 0.5, 0.0, source - 1.0);
        const int base = std::min(static_cast<int>(at), source - 1);
        const auto share = static_cast<float>(at - base);
        axis.first.push_back(base);
        axis.weights.push_back(base + 1 < source ? std::vector<float>{1 - share, share}
                                                 : std::vector<float>{1});
    }
    return axis;
}

AxisWeights areaWeights(int source, int target, double factor) {
    AxisWeights axis;
    for (int i = 0; i < target; ++i) {
        const double from = std::min(i / factor, source - 1.0);
        const double to = std::clamp((i + 1) / factor, from + 1e-6, static_cast<double>(source));
        const int base = static_cast<int>(from);
        std::vector<float> weights;
        for (int s = base; s < source && s < to; ++s) {
            const double covered = std::min<double>(to, s + 1) - std::max<double>(from, s);
            weights.push_back(static_cast<float>(covered / (to - from)));
        }
        axis.first.push_back(base);
        axis.weights.push_back(std::move(weights));
    }
    return axis;
}

AxisWeights axisWeights(int source, int target, double factor) {
    return factor < 1 ? areaWeights(source, target, factor)
                      : interpolationWeights(source, target, factor);
}

}  // namespace

GrayImage::GrayImage(int width, int height, std::uint8_t fill)
    : width_(std::max(0, width)),
      height_(std::max(0, height)),
      pixels_(static_cast<std::size_t>(width_) * static_cast<std::size_t>(height_), fill) {}

std::uint8_t GrayImage::nearest(int x, int y) const {
    return at(std::clamp(x, 0, width_ - 1), std::clamp(y, 0, height_ - 1));
}

GrayImage brightness(const Image& image, const PixelBox& box) {
    GrayImage gray(box.width(), box.height());
    for (int y = 0; y < gray.height(); ++y) {
        const std::uint32_t* source = image.row(box.top + y) + box.left;
        std::uint8_t* target = gray.row(y);
        for (int x = 0; x < gray.width(); ++x) {
            const std::uint32_t pixel = source[x];
            const std::uint32_t weighted =
                77 * ((pixel >> 16) & 255) + 151 * ((pixel >> 8) & 255) + 28 * (pixel & 255);
            target[x] = static_cast<std::uint8_t>(weighted >> 8);
        }
    }
    return gray;
}

GrayImage scaled(const GrayImage& image, double factor) {
    const int width = std::max(1, static_cast<int>(std::lround(image.width() * factor)));
    const int height = std::max(1, static_cast<int>(std::lround(image.height() * factor)));
    const AxisWeights columns = axisWeights(image.width(), width, factor);
    const AxisWeights rows = axisWeights(image.height(), height, factor);
    GrayImage result(width, height);
    std::vector<float> line(static_cast<std::size_t>(image.width()));
    for (int y = 0; y < height; ++y) {
        const auto row = static_cast<std::size_t>(y);
        std::fill(line.begin(), line.end(), 0.0F);
        for (std::size_t k = 0; k < rows.weights[row].size(); ++k) {
            const std::uint8_t* source = image.row(rows.first[row] + static_cast<int>(k));
            for (std::size_t x = 0; x < line.size(); ++x) {
                line[x] += rows.weights[row][k] * static_cast<float>(source[x]);
            }
        }
        for (int x = 0; x < width; ++x) {
            const auto column = static_cast<std::size_t>(x);
            float sum = 0;
            const auto base = static_cast<std::size_t>(columns.first[column]);
            for (std::size_t k = 0; k < columns.weights[column].size(); ++k) {
                sum += columns.weights[column][k] * line[base + k];
            }
            result.at(x, y) = static_cast<std::uint8_t>(std::clamp(sum + 0.5F, 0.0F, 255.0F));
        }
    }
    return result;
}

}  // namespace velmora
