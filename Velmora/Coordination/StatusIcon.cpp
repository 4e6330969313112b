// SPDX-License-Identifier: MIT
#include <QFont>
#include <QFontDatabase>
#include <QGuiApplication>
#include <QImage>
#include <QPainter>
#include <QTextOption>
#include <algorithm>
#include <array>

#include "Velmora/Coordination/StatusBarController.h"

namespace velmora {

namespace {

constexpr int iconSize = 18;  // Points.
constexpr int fontSize = 16;

/// The sizes of usual trays in pixels: 18 points at the scales that show them best.
constexpr std::array<int, 8> sizes{16, 18, 22, 24, 32, 36, 48, 64};

QFont iconFont() {
    QFont font = QGuiApplication::font();
    const QString mainland = QStringLiteral("Noto Sans CJK SC");
    if (QFontDatabase::hasFamily(mainland)) {
        font.setFamily(mainland);
    }
    font.setPixelSize(fontSize);
    font.setWeight(QFont::DemiBold);
    font.setItalic(false);
    return font;
}

QImage drawn(int pixels) {
    QImage image(pixels, pixels, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing);
    painter.scale(static_cast<double>(pixels) / iconSize, static_cast<double>(pixels) / iconSize);
    painter.setFont(iconFont());
    painter.setPen(Qt::white);
    // One point below the top edge, so that the character stands in the middle.
    painter.drawText(QRectF(0, 1, iconSize, iconSize), Qt::AlignCenter | Qt::TextDontClip,
                     QStringLiteral("知"));
    painter.end();
    return image.convertToFormat(QImage::Format_ARGB32);
}

}  // namespace

std::vector<StatusIconPixmap> StatusBarController::makeStatusIcon() {
    std::vector<StatusIconPixmap> icon;
    for (const int size : sizes) {
        const QImage image = drawn(size);
        StatusIconPixmap pixmap{.width = size, .height = size, .pixels = {}};
        for (int y = 0; y < size; ++y) {
            const auto* const row = reinterpret_cast<const QRgb*>(image.constScanLine(y));
            pixmap.pixels.insert(pixmap.pixels.end(), row, row + size);
        }
        icon.push_back(std::move(pixmap));
    }
    return icon;
}

}  // namespace velmora
