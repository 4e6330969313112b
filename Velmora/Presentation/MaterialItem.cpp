// SPDX-License-Identifier: MIT
#include "Velmora/Presentation/MaterialItem.h"

#include <QPainter>
#include <algorithm>
#include <cmath>

#include "Velmora/Presentation/ShapePath.h"

namespace velmora {

namespace {

constexpr double lineWidth = 1;
constexpr double sidePiece = 16;  ///< So short that the toolkit paints it without other threads.

/// Whether the edges of a rectangle, and of all others in whole points, lie between pixels.
bool isWhole(const QPainter& painter, const QRectF& rect) {
    const QTransform& pixels = painter.deviceTransform();
    const auto whole = [](double value) { return value == std::round(value); };
    return pixels.type() <= QTransform::TxScale && whole(pixels.m11()) && whole(pixels.m22()) &&
           whole(pixels.dx()) && whole(pixels.dy()) && whole(rect.left()) && whole(rect.top()) &&
           whole(rect.width()) && whole(rect.height());
}

}  // namespace

MaterialItem::MaterialItem(QQuickItem* parent) : QQuickPaintedItem(parent) {
    setAntialiasing(true);
}

void MaterialItem::setRadius(double radius) {
    if (radius != radius_) {
        radius_ = radius;
        emit appearanceChanged();
        update();
    }
}

void MaterialItem::setFill(const QColor& fill) {
    if (fill != fill_) {
        fill_ = fill;
        emit appearanceChanged();
        update();
    }
}

void MaterialItem::setFillsCorners(bool fillsCorners) {
    if (fillsCorners != fillsCorners_) {
        fillsCorners_ = fillsCorners;
        emit appearanceChanged();
        update();
    }
}

void MaterialItem::setStroke(const QColor& stroke) {
    if (stroke != stroke_) {
        stroke_ = stroke;
        emit appearanceChanged();
        update();
    }
}

void MaterialItem::paint(QPainter* painter) {
    const QRectF bounds = boundingRect();
    const double end = std::ceil(roundedEnd(radius_)) + lineWidth;
    if (!isWhole(*painter, bounds) || bounds.height() <= 2 * end) {
        paintShape(*painter, bounds);
        return;
    }
    const QRectF middle = bounds.adjusted(0, end, 0, -end);
    for (const QRectF& strip : {QRectF(bounds.topLeft(), middle.topRight()),
                                QRectF(middle.bottomLeft(), bounds.bottomRight())}) {
        painter->save();
        painter->setClipRect(strip, Qt::IntersectClip);
        paintShape(*painter, bounds);
        painter->restore();
    }
    paintMiddle(*painter, middle);
}

void MaterialItem::paintShape(QPainter& painter, const QRectF& bounds) const {
    painter.setRenderHint(QPainter::Antialiasing);
    if (fillsCorners_) {
        painter.fillRect(bounds, fill_);
    } else {
        painter.fillPath(roundedPath(bounds, radius_), fill_);
    }
    // The outer half of a line on the edge itself would fall outside the window; inside, the whole
    // line is visible and sharp.
    const double inset = lineWidth / 2;
    painter.strokePath(roundedPath(bounds.adjusted(inset, inset, -inset, -inset), radius_ - inset),
                       QPen(stroke_, lineWidth));
}

/// Where the sides are straight there is nothing to smooth. The toolkit smooths large shapes on
/// several threads and waits for them, which takes longer where the processors are at work.
void MaterialItem::paintMiddle(QPainter& painter, const QRectF& middle) const {
    painter.setRenderHint(QPainter::Antialiasing, false);
    painter.setCompositionMode(QPainter::CompositionMode_Source);  // Nothing is there yet.
    painter.fillRect(middle, fill_);
    painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
    const int pieces = static_cast<int>(std::ceil(middle.height() / sidePiece));
    for (int piece = 0; piece < pieces; ++piece) {
        const double y = middle.top() + piece * sidePiece;
        const double height = std::min(sidePiece, middle.bottom() - y);
        painter.fillRect(QRectF(middle.left(), y, lineWidth, height), stroke_);
        painter.fillRect(QRectF(middle.right() - lineWidth, y, lineWidth, height), stroke_);
    }
}

}  // namespace velmora
