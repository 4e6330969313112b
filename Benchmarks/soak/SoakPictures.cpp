// SPDX-License-Identifier: MIT
#include "Benchmarks/soak/SoakPictures.h"

#include <QImage>
#include <cstdint>
#include <stdexcept>
#include <string>
#include <utility>

namespace velmora::benchmark {

namespace {

constexpr int width = 520;
constexpr int height = 160;
constexpr std::size_t noiseEvery = 10;
constexpr std::size_t plainEvery = 25;

Image loaded(const std::string& name) {
    const QImage picture =
        QImage(QString::fromStdString(std::string(VELMORA_FIXTURES "/Recognition/") + name))
            .convertToFormat(QImage::Format_RGB32);
    if (picture.isNull()) {
        throw std::runtime_error(name + " cannot be read");
    }
    std::vector<std::uint32_t> pixels;
    for (int y = 0; y < picture.height(); ++y) {
        const auto* row = reinterpret_cast<const std::uint32_t*>(picture.constScanLine(y));
        pixels.insert(pixels.end(), row, row + picture.width());
    }
    return {picture.width(), picture.height(), std::move(pixels)};
}

}  // namespace

SoakPictures::SoakPictures() {
    for (const char* name : {"simplified-light.png", "traditional-dark.png", "subtitle.png",
                             "mixed.png", "english.png", "button.png"}) {
        texts_.push_back(loaded(name));
    }
}

int SoakPictures::between(int least, int greatest) {
    return std::uniform_int_distribution<int>(least, greatest)(random_);
}

SoakPictures::Shown SoakPictures::next() {
    ++count_;
    if (count_ % plainEvery == 0) {
        return plain();
    }
    return count_ % noiseEvery == 0 ? noise() : text();
}

SoakPictures::Shown SoakPictures::text() {
    const Image& text = texts_[count_ % texts_.size()];
    const int right = between(0, 40);
    const int down = between(0, 20);
    const auto shade = static_cast<std::uint32_t>(between(0, 12));
    const std::uint32_t paper = text.row(0)[0];
    std::vector<std::uint32_t> pixels(static_cast<std::size_t>(width) * height, paper);
    for (int y = 0; y + down < height && y < text.height(); ++y) {
        for (int x = 0; x + right < width && x < text.width(); ++x) {
            pixels[static_cast<std::size_t>(y + down) * width +
                   static_cast<std::size_t>(x + right)] = text.row(y)[x];
        }
    }
    for (std::uint32_t& pixel : pixels) {
        pixel ^= shade * 0x010101U;
    }
    const Point pointer{static_cast<double>(between(60, 320) + right),
                        static_cast<double>(55 + down)};
    return {{width, height, std::move(pixels)}, pointer};
}

SoakPictures::Shown SoakPictures::noise() {
    std::vector<std::uint32_t> pixels(static_cast<std::size_t>(width) * height);
    for (std::uint32_t& pixel : pixels) {
        pixel = 0xFF000000U | (static_cast<std::uint32_t>(random_()) & 0xFFFFFFU);
    }
    return {{width, height, std::move(pixels)}, {width / 2.0, height / 2.0}};
}

SoakPictures::Shown SoakPictures::plain() {
    const int side = between(1, 3000);
    const int other = between(1, 700);
    std::vector<std::uint32_t> pixels(
        static_cast<std::size_t>(side) * static_cast<std::size_t>(other), 0xFF304050U);
    return {{side, other, std::move(pixels)}, {side / 2.0, other / 2.0}};
}

}  // namespace velmora::benchmark
