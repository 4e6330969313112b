// SPDX-License-Identifier: MIT
#include <QFont>
#include <QFontDatabase>
#include <QFontMetricsF>
#include <QGuiApplication>
#include <QImage>
#include <QPainter>
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
    const QString character = QStringLiteral("知");
    // By its ink: fonts leave very different room above and below their lines.
    const QRectF ink = QFontMetricsF(painter.font()).tightBoundingRect(character);
    painter.drawText(QPointF(iconSize, iconSize) / 2 - ink.center(), character);
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
