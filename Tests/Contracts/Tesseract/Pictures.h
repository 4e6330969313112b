// SPDX-License-Identifier: MIT
#pragma once

#include <QImage>
#include <QString>
#include <string>

#include "Velmora/Platform/Image.h"

namespace velmora {

/// A committed picture of Tests/Fixtures/Recognition; empty where it cannot be read.
inline Image fixturePicture(const std::string& name) {
    const QString path =
        QString::fromStdString(std::string(VELMORA_FIXTURES) + "/Recognition/" + name + ".png");
    const QImage picture = QImage(path).convertToFormat(QImage::Format_ARGB32);
    std::vector<std::uint32_t> pixels;
    for (int y = 0; y < picture.height(); ++y) {
        const auto* row = reinterpret_cast<const std::uint32_t*>(picture.constScanLine(y));
        pixels.insert(pixels.end(), row, row + picture.width());
    }
    return {picture.width(), picture.height(), std::move(pixels)};
}

inline Image plainPicture(int width, int height, std::uint32_t colour) {
    return {width, height,
            std::vector<std::uint32_t>(
                static_cast<std::size_t>(width) * static_cast<std::size_t>(height), colour)};
}

}  // namespace velmora
