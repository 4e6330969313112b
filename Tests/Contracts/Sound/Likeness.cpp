// SPDX-License-Identifier: MIT
#include "Tests/Contracts/Sound/Likeness.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <numbers>

namespace velmora::test {
namespace {

constexpr std::size_t bands = 16;
using Spectrum = std::array<double, bands>;

constexpr std::size_t frame = 512;
constexpr std::size_t step = 256;

/// The strength of one frequency in a frame (Goertzel's recurrence).
double strength(const std::int16_t* samples, double frequency, int samplesPerSecond) {
    const double turn = 2 * std::cos(2 * std::numbers::pi * frequency / samplesPerSecond);
    double last = 0;
    double before = 0;
    for (std::size_t i = 0; i < frame; ++i) {
        const double now = samples[i] + turn * last - before;
        before = last;
        last = now;
    }
    return std::max(0.0, last * last + before * before - turn * last * before);
}

/// The shape of each frame's spectrum, without its loudness.
std::vector<Spectrum> spectra(const std::vector<std::int16_t>& sound, int samplesPerSecond) {
    std::vector<Spectrum> result;
    for (std::size_t begin = 0; begin + frame <= sound.size(); begin += step) {
        Spectrum shape{};
        double mean = 0;
        for (std::size_t band = 0; band < bands; ++band) {
            const double frequency = 150 * std::pow(1.26, static_cast<double>(band));
            shape[band] = std::log1p(strength(&sound[begin], frequency, samplesPerSecond));
            mean += shape[band] / bands;
        }
        double length = 0;
        for (double& value : shape) {
            value -= mean;
            length += value * value;
        }
        for (double& value : shape) {
            value /= std::sqrt(std::max(length, 1e-9));
        }
        result.push_back(shape);
    }
    return result;
}

double distance(const Spectrum& one, const Spectrum& other) {
    double product = 0;
    for (std::size_t band = 0; band < bands; ++band) {
        product += one[band] * other[band];
    }
    return 1 - product;
}

}  // namespace

double difference(const std::vector<std::int16_t>& one, const std::vector<std::int16_t>& other,
                  int samplesPerSecond) {
    constexpr double far = std::numeric_limits<double>::infinity();
    const auto rows = spectra(one, samplesPerSecond);
    const auto columns = spectra(other, samplesPerSecond);
    if (rows.empty() || columns.empty()) {
        return 1;
    }
    std::vector<double> before(columns.size() + 1, far);
    before[0] = 0;
    for (const Spectrum& row : rows) {
        std::vector<double> now(columns.size() + 1, far);
        for (std::size_t column = 0; column < columns.size(); ++column) {
            now[column + 1] = distance(row, columns[column]) +
                              std::min({before[column], before[column + 1], now[column]});
        }
        before = std::move(now);
    }
    return before.back() / static_cast<double>(std::max(rows.size(), columns.size()));
}

}  // namespace velmora::test
