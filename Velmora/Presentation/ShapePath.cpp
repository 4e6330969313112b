// SPDX-License-Identifier: MIT
#include "Velmora/Presentation/ShapePath.h"

#include <QBitmap>
#include <QPainter>
#include <algorithm>

namespace velmora {

namespace {

/// How far along the edge, in radii, a corner begins. A circular arc begins at 1; beginning
/// earlier lets the curvature rise from nothing.
constexpr double cornerReach = 1.28;

/// Where on that stretch the two control points of the corner's curve lie, from its begin.
constexpr double controlShare = 0.72;

void addCorner(QPainterPath& path, QPointF corner, QPointF from, QPointF to) {
    path.lineTo(from);
    path.cubicTo(from + (corner - from) * controlShare, to + (corner - to) * controlShare, to);
}

}  // namespace

double roundedEnd(double radius) {
    return radius * cornerReach;
}

QPainterPath roundedPath(const QRectF& rect, double radius) {
    QPainterPath path;
    const double shorter = std::min(rect.width(), rect.height());
    const double reach = roundedEnd(radius);
    if (reach * 2 >= shorter) {
        const double circular = std::min(radius, shorter / 2);
        path.addRoundedRect(rect, circular, circular);
        return path;
    }
    const QPointF right(reach, 0);
    const QPointF down(0, reach);
    path.moveTo(rect.topLeft() + right);
    addCorner(path, rect.topRight(), rect.topRight() - right, rect.topRight() + down);
    addCorner(path, rect.bottomRight(), rect.bottomRight() - down, rect.bottomRight() - right);
    addCorner(path, rect.bottomLeft(), rect.bottomLeft() + right, rect.bottomLeft() - down);
    addCorner(path, rect.topLeft(), rect.topLeft() + down, rect.topLeft() + right);
    path.closeSubpath();
    return path;
}

QRegion roundedRegion(const QRect& rect, double radius) {
    QBitmap bitmap(rect.size());
    bitmap.clear();
    QPainter painter(&bitmap);
    painter.fillPath(roundedPath(QRectF(QPointF(0, 0), QSizeF(rect.size())), radius), Qt::color1);
    painter.end();
    return QRegion(bitmap).translated(rect.topLeft());
}

}  // namespace velmora
