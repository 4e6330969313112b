// SPDX-License-Identifier: MIT
#include "Velmora/Presentation/SymbolItem.h"

#include <QFile>
#include <QImage>
#include <QPainter>
#include <QSvgRenderer>

namespace velmora {

SymbolItem::SymbolItem(QQuickItem* parent) : QQuickPaintedItem(parent) {
    setAntialiasing(true);
}

void SymbolItem::setName(const QString& name) {
    if (name != name_) {
        name_ = name;
        emit nameChanged();
        update();
    }
}

void SymbolItem::setColor(const QColor& color) {
    if (color != color_) {
        color_ = color;
        emit colorChanged();
        update();
    }
}

void SymbolItem::paint(QPainter* painter) {
    const QString file = QStringLiteral(":/symbols/%1.svg").arg(name_);
    if (!QFile::exists(file)) {
        return;
    }
    QSvgRenderer renderer(file);
    renderer.setAspectRatioMode(Qt::KeepAspectRatio);
    const double ratio = painter->device()->devicePixelRatioF() * painter->transform().m11();
    QImage image((boundingRect().size() * ratio).toSize(), QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter symbol(&image);
    renderer.render(&symbol, QRectF(image.rect()));
    symbol.setCompositionMode(QPainter::CompositionMode_SourceIn);
    symbol.fillRect(image.rect(), color_);
    symbol.end();
    painter->drawImage(boundingRect(), image);
}

}  // namespace velmora
