// SPDX-License-Identifier: MIT
#pragma once

#include <QtQml/qqmlregistration.h>
#include <QColor>
#include <QQuickPaintedItem>
#include <QString>

namespace velmora {

/// One of the program's own symbols, drawn in a single colour as large as the item allows, centred.
/// An unknown name draws nothing.
class SymbolItem : public QQuickPaintedItem {
    Q_OBJECT
    QML_NAMED_ELEMENT(Symbol)
    Q_PROPERTY(QString name READ name WRITE setName NOTIFY nameChanged)
    Q_PROPERTY(QColor color READ color WRITE setColor NOTIFY colorChanged)

  public:
    explicit SymbolItem(QQuickItem* parent = nullptr);

    QString name() const { return name_; }
    QColor color() const { return color_; }
    void setName(const QString& name);
    void setColor(const QColor& color);

    void paint(QPainter* painter) override;

  signals:
    void nameChanged();
    void colorChanged();

  private:
    QString name_;
    QColor color_ = Qt::black;
};

}  // namespace velmora
