// SPDX-License-Identifier: MIT
#include "Tests/Desktop/Demo/ScreenPicture.h"

#include <QPainter>
#include <QPainterPath>
#include <algorithm>
#include <utility>

namespace velmora::test {

QImage screenPicture(const Image& screen) {
    QImage picture(screen.width(), screen.height(), QImage::Format_ARGB32);
    for (int y = 0; y < screen.height(); ++y) {
        std::copy(screen.row(y), screen.row(y) + screen.width(),
                  reinterpret_cast<std::uint32_t*>(picture.scanLine(y)));
    }
    return picture.convertToFormat(QImage::Format_RGB32);
}

void drawPointer(QImage& picture, Point tip, double scale) {
    QPainterPath arrow;
    arrow.moveTo(0, 0);
    for (const auto& [x, y] :
         {std::pair{0.0, 17.0}, {4.0, 13.2}, {6.8, 19.4}, {9.4, 18.2}, {6.7, 12.2}, {12.0, 12.0}}) {
        arrow.lineTo(x, y);
    }
    arrow.closeSubpath();
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(tip.x, tip.y);
    painter.scale(scale, scale);
    painter.setPen(QPen(Qt::white, 1.6, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.setBrush(Qt::black);
    painter.drawPath(arrow);
}

}  // namespace velmora::test
