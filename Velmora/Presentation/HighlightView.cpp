// SPDX-License-Identifier: MIT
#include "Velmora/Presentation/HighlightView.h"

#include <QBitmap>
#include <QPainter>
#include <QPainterPath>

namespace velmora {

namespace {

constexpr double pathInset = 1.5;
constexpr double cornerRadius = 4;
constexpr double lineWidth = 2;
constexpr float fillOpacity = 0.12F;
constexpr float strokeOpacity = 0.9F;

QColor withAlpha(QColor color, float alpha) {
    color.setAlphaF(alpha);
    return color;
}

}  // namespace

HighlightView::HighlightView(const Theme& theme) : OverlayWindow(theme) {
    setTitle(QStringLiteral("Velmora"));
}

void HighlightView::place(const QRectF& frame, const QColor& accent, bool compositing) {
    const QRect window = frame.toAlignedRect();
    frame_ = frame.translated(-window.topLeft());
    accent_ = accent;
    compositing_ = compositing;
    setGeometry(window);
    applyShape();
    update();
}

QRectF HighlightView::outlinePath() const {
    return frame_.adjusted(pathInset, pathInset, -pathInset, -pathInset);
}

void HighlightView::applyShape() {
    if (compositing_) {
        setMask(QRegion());
        return;
    }
    QBitmap shape(size());
    shape.clear();
    QPainter painter(&shape);
    painter.setPen(QPen(Qt::color1, lineWidth));
    painter.drawRoundedRect(outlinePath(), cornerRadius, cornerRadius);
    painter.end();
    setMask(QRegion(shape));
}

void HighlightView::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setCompositionMode(QPainter::CompositionMode_Source);
    if (!compositing_) {
        painter.fillRect(QRect(QPoint(0, 0), size()), accent_);
        return;
    }
    painter.fillRect(QRect(QPoint(0, 0), size()), Qt::transparent);
    painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
    painter.setRenderHint(QPainter::Antialiasing);
    QPainterPath path;
    path.addRoundedRect(outlinePath(), cornerRadius, cornerRadius);
    painter.fillPath(path, withAlpha(accent_, fillOpacity));
    painter.strokePath(path, QPen(withAlpha(accent_, strokeOpacity), lineWidth));
}

}  // namespace velmora
