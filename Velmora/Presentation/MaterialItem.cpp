// SPDX-License-Identifier: MIT
#include "Velmora/Presentation/MaterialItem.h"

#include <QPainter>

#include "Velmora/Presentation/ShapePath.h"

namespace velmora {

namespace {

constexpr double lineWidth = 1;

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
    painter->setRenderHint(QPainter::Antialiasing);
    if (fillsCorners_) {
        painter->fillRect(bounds, fill_);
    } else {
        painter->fillPath(roundedPath(bounds, radius_), fill_);
    }
    // The outer half of a line on the edge itself would fall outside the window; inside, the whole
    // line is visible and sharp.
    const double inset = lineWidth / 2;
    painter->strokePath(roundedPath(bounds.adjusted(inset, inset, -inset, -inset), radius_ - inset),
                        QPen(stroke_, lineWidth));
}

}  // namespace velmora
