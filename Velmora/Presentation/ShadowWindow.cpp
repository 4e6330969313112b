// SPDX-License-Identifier: MIT
#include "Velmora/Presentation/ShadowWindow.h"

#include <QPainter>
#include <algorithm>
#include <array>
#include <cmath>
#include <vector>

#include "Velmora/Presentation/ShapePath.h"

namespace velmora {

namespace {

constexpr double fallDistance = 7;  ///< How far below the panel its shadow falls, in points.
constexpr double blurReach = 21;    ///< From full strength to nothing, in points.
constexpr int blurPasses = 3;       ///< Three box blurs come close to a bell curve.

/// One box blur of a line of `count` values `step` apart.
void blurLine(uchar* line, int count, std::ptrdiff_t step, int radius, std::vector<uchar>& buffer) {
    buffer.resize(static_cast<std::size_t>(count));
    const int width = 2 * radius + 1;
    int sum = 0;
    for (int i = -radius; i < count + radius; ++i) {
        const int entering = i + radius;
        sum += entering < count ? line[entering * step] : 0;
        const int leaving = i - radius - 1;
        sum -= leaving >= 0 ? line[leaving * step] : 0;
        if (i >= 0 && i < count) {
            buffer[static_cast<std::size_t>(i)] = static_cast<uchar>(sum / width);
        }
    }
    for (int i = 0; i < count; ++i) {
        line[i * step] = buffer[static_cast<std::size_t>(i)];
    }
}

void blur(QImage& mask, int radius) {
    std::vector<uchar> buffer;
    const auto stride = static_cast<std::ptrdiff_t>(mask.bytesPerLine());
    for (int pass = 0; pass < blurPasses; ++pass) {
        for (int y = 0; y < mask.height(); ++y) {
            blurLine(mask.bits() + y * stride, mask.width(), 1, radius, buffer);
        }
        for (int x = 0; x < mask.width(); ++x) {
            blurLine(mask.bits() + x, mask.height(), stride, radius, buffer);
        }
    }
}

/// Begin and length of the three stretches of a side whose ends are `corner` long.
std::array<std::pair<int, int>, 3> stretches(int length, int corner) {
    return {{{0, corner}, {corner, length - 2 * corner}, {length - corner, corner}}};
}

}  // namespace

ShadowWindow::ShadowWindow(const Theme& theme) : OverlayWindow(theme) {}

void ShadowWindow::surround(const QRect& panel, double radius, const QColor& color) {
    if (radius != radius_ || color != color_) {
        radius_ = radius;
        color_ = color;
        tileRatio_ = 0;
    }
    setGeometry(panel.adjusted(-margin, -margin, margin, margin));
    update();
}

void ShadowWindow::renderTile(double ratio) {
    const int edge = static_cast<int>(std::lround(margin * ratio));
    const int inner = static_cast<int>(std::ceil((radius_ + blurReach) * ratio));
    tileCorner_ = edge + inner;
    tileRatio_ = ratio;
    const int side = 2 * tileCorner_ + 1;
    QImage mask(side, side, QImage::Format_Alpha8);
    mask.fill(0);
    QPainter shape(&mask);
    shape.setRenderHint(QPainter::Antialiasing);
    const QRectF panel(edge, edge, side - 2 * edge, side - 2 * edge);
    shape.fillPath(roundedPath(panel.translated(0, fallDistance * ratio), radius_ * ratio),
                   Qt::black);
    shape.end();
    blur(mask, std::max(1, static_cast<int>(std::lround(blurReach * ratio / blurPasses))));

    tile_ = QImage(side, side, QImage::Format_ARGB32_Premultiplied);
    tile_.fill(color_);
    QPainter painter(&tile_);
    painter.setCompositionMode(QPainter::CompositionMode_DestinationIn);
    painter.drawImage(0, 0, mask);
    // The panel is translucent: nothing of its own shadow may darken it.
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setCompositionMode(QPainter::CompositionMode_DestinationOut);
    painter.fillPath(roundedPath(panel, radius_ * ratio), Qt::black);
}

void ShadowWindow::paintEvent(QPaintEvent*) {
    const double ratio = devicePixelRatio();
    if (tileRatio_ != ratio) {
        renderTile(ratio);
    }
    QPainter painter(this);
    painter.setCompositionMode(QPainter::CompositionMode_Source);
    painter.fillRect(QRect(QPoint(0, 0), size()), Qt::transparent);
    painter.scale(1 / ratio, 1 / ratio);
    const int width = static_cast<int>(std::lround(size().width() * ratio));
    const int height = static_cast<int>(std::lround(size().height() * ratio));
    // Where two corners meet within the panel they share the length.
    const auto columns = stretches(width, std::min(tileCorner_, width / 2));
    const auto rows = stretches(height, std::min(tileCorner_, height / 2));
    for (std::size_t row = 0; row < rows.size(); ++row) {
        for (std::size_t column = 0; column < columns.size(); ++column) {
            const auto [x, w] = columns[column];
            const auto [y, h] = rows[row];
            const int sourceX = column == 0 ? 0 : column == 1 ? tileCorner_ : tile_.width() - w;
            const int sourceY = row == 0 ? 0 : row == 1 ? tileCorner_ : tile_.height() - h;
            painter.drawImage(QRect(x, y, w, h), tile_,
                              QRect(sourceX, sourceY, column == 1 ? 1 : w, row == 1 ? 1 : h));
        }
    }
}

}  // namespace velmora
