// SPDX-License-Identifier: MIT
#include "Velmora/TextCapture/ImageEnhancement.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <numbers>
#include <utility>
#include <vector>

namespace velmora {

namespace {

constexpr int lobes = 3;
constexpr std::size_t taps = std::size_t{2} * lobes;
constexpr std::size_t channels = 4;

/// The source positions that make up one target position, and how much each counts.
struct Kernel {
    std::array<int, taps> positions{};
    std::array<float, taps> weights{};
};

double lanczos(double x) {
    if (x == 0) {
        return 1;
    }
    if (std::abs(x) >= lobes) {
        return 0;
    }
    const double angle = std::numbers::pi * x;
    return lobes * std::sin(angle) * std::sin(angle / lobes) / (angle * angle);
}

/// One kernel for each target position; positions beyond the edges repeat the outermost pixel.
std::vector<Kernel> kernels(int sourceLength, int targetLength) {
    std::vector<Kernel> result(static_cast<std::size_t>(targetLength));
    const double step = static_cast<double>(sourceLength) / targetLength;
    for (int target = 0; target < targetLength; ++target) {
        const double centre = (target + 0.5) * step - 0.5;
        const int first = static_cast<int>(std::floor(centre)) - lobes + 1;
        Kernel& kernel = result[static_cast<std::size_t>(target)];
        std::array<double, taps> weights{};
        double sum = 0;
        for (std::size_t tap = 0; tap < taps; ++tap) {
            const int position = first + static_cast<int>(tap);
            weights[tap] = lanczos(centre - position);
            sum += weights[tap];
            kernel.positions[tap] = std::clamp(position, 0, sourceLength - 1);
        }
        for (std::size_t tap = 0; tap < taps; ++tap) {
            kernel.weights[tap] = static_cast<float>(weights[tap] / sum);
        }
    }
    return result;
}

float channelOf(std::uint32_t pixel, std::size_t channel) {
    return static_cast<float>((pixel >> (8 * channel)) & 0xFFU);
}

/// One row of the source, resampled to the target's width, its channels side by side.
std::vector<float> stretchedRow(const Image& image, int y, const std::vector<Kernel>& columns) {
    std::vector<float> row(columns.size() * channels);
    const std::uint32_t* pixels = image.row(y);
    float* out = row.data();
    for (const Kernel& kernel : columns) {
        std::array<float, channels> sums{};
        for (std::size_t tap = 0; tap < taps; ++tap) {
            const std::uint32_t pixel = pixels[kernel.positions[tap]];
            for (std::size_t channel = 0; channel < channels; ++channel) {
                sums[channel] += kernel.weights[tap] * channelOf(pixel, channel);
            }
        }
        out = std::copy(sums.begin(), sums.end(), out);
    }
    return row;
}

std::uint32_t byteOf(float value) {
    return static_cast<std::uint32_t>(std::clamp(value + 0.5F, 0.0F, 255.0F));
}

/// The rows of the source that were stretched last, so that each is stretched once.
class StretchedRows {
  public:
    StretchedRows(const Image& image, const std::vector<Kernel>& columns)
        : image_(image), columns_(columns) {
        held_.fill(-1);
    }

    /// Valid until taps other rows have been asked for.
    const float* row(int y) {
        const std::size_t slot = static_cast<std::size_t>(y) % taps;
        if (held_[slot] != y) {
            rows_[slot] = stretchedRow(image_, y, columns_);
            held_[slot] = y;
        }
        return rows_[slot].data();
    }

  private:
    const Image& image_;
    const std::vector<Kernel>& columns_;
    std::array<int, taps> held_{};
    std::array<std::vector<float>, taps> rows_;
};

}  // namespace

std::optional<Image> ImageEnhancement::upscaledImage(const Image& image, double factor) {
    if (image.isEmpty()) {
        return std::nullopt;
    }
    if (factor <= 1) {
        return image;
    }
    const double width = std::round(image.width() * factor);
    const double height = std::round(image.height() * factor);
    if (!(width * height <= largestPixelCount)) {
        return std::nullopt;
    }
    const std::vector<Kernel> columns = kernels(image.width(), static_cast<int>(width));
    const std::vector<Kernel> lines = kernels(image.height(), static_cast<int>(height));
    StretchedRows stretched(image, columns);
    std::vector<std::uint32_t> pixels;
    pixels.reserve(columns.size() * lines.size());
    std::vector<float> sums(columns.size() * channels);
    for (const Kernel& kernel : lines) {
        std::fill(sums.begin(), sums.end(), 0.0F);
        for (std::size_t tap = 0; tap < taps; ++tap) {
            const float* row = stretched.row(kernel.positions[tap]);
            const float weight = kernel.weights[tap];
            for (std::size_t index = 0; index < sums.size(); ++index) {
                sums[index] += weight * row[index];
            }
        }
        for (std::size_t index = 0; index < sums.size(); index += channels) {
            pixels.push_back(byteOf(sums[index]) | byteOf(sums[index + 1]) << 8U |
                             byteOf(sums[index + 2]) << 16U | byteOf(sums[index + 3]) << 24U);
        }
    }
    return Image(static_cast<int>(width), static_cast<int>(height), std::move(pixels));
}

std::optional<Image> ImageEnhancement::grayscaleContrastImage(const Image& image) {
    constexpr float contrast = 1.8F;
    constexpr float middle = 0.5F * 255;
    if (image.isEmpty()) {
        return std::nullopt;
    }
    std::vector<std::uint32_t> pixels;
    pixels.reserve(static_cast<std::size_t>(image.width()) *
                   static_cast<std::size_t>(image.height()));
    for (int y = 0; y < image.height(); ++y) {
        const std::uint32_t* row = image.row(y);
        for (int x = 0; x < image.width(); ++x) {
            const float luma = 0.2126F * channelOf(row[x], 2) + 0.7152F * channelOf(row[x], 1) +
                               0.0722F * channelOf(row[x], 0);
            const std::uint32_t grey = byteOf((luma - middle) * contrast + middle);
            pixels.push_back((row[x] & 0xFF000000U) | grey << 16U | grey << 8U | grey);
        }
    }
    return Image(image.width(), image.height(), std::move(pixels));
}

}  // namespace velmora
