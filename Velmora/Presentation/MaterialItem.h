// SPDX-License-Identifier: MIT
#pragma once

#include <QtQml/qqmlregistration.h>
#include <QColor>
#include <QQuickPaintedItem>

namespace velmora {

/// The ground of a card or bubble: a rounded shape, filled and outlined along the inside of its
/// edge.
class MaterialItem : public QQuickPaintedItem {
    Q_OBJECT
    QML_NAMED_ELEMENT(Material)
    Q_PROPERTY(double radius READ radius WRITE setRadius NOTIFY appearanceChanged)
    Q_PROPERTY(QColor fill READ fill WRITE setFill NOTIFY appearanceChanged)
    Q_PROPERTY(bool fillsCorners READ fillsCorners WRITE setFillsCorners NOTIFY appearanceChanged)
    Q_PROPERTY(QColor stroke READ stroke WRITE setStroke NOTIFY appearanceChanged)

  public:
    explicit MaterialItem(QQuickItem* parent = nullptr);

    double radius() const { return radius_; }
    QColor fill() const { return fill_; }
    QColor stroke() const { return stroke_; }

    /// Whether the fill reaches into the corners, where the window's own shape cuts it off.
    bool fillsCorners() const { return fillsCorners_; }
    void setRadius(double radius);
    void setFill(const QColor& fill);
    void setFillsCorners(bool fillsCorners);
    void setStroke(const QColor& stroke);

    void paint(QPainter* painter) override;

  signals:
    void appearanceChanged();

  private:
    void paintShape(QPainter& painter, const QRectF& bounds) const;
    void paintMiddle(QPainter& painter, const QRectF& middle) const;

    double radius_ = 0;
    QColor fill_ = Qt::transparent;
    bool fillsCorners_ = false;
    QColor stroke_ = Qt::transparent;
};

}  // namespace velmora
