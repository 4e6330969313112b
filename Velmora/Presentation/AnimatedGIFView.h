// SPDX-License-Identifier: MIT
#pragma once

#include <QtQml/qqmlregistration.h>
#include <QMovie>
#include <QQuickPaintedItem>
#include <QString>
#include <memory>

namespace velmora {

/// Plays one of the program's own animations, always as large as the item. A resource that is
/// missing or damaged leaves the item empty.
class AnimatedGIFView : public QQuickPaintedItem {
    Q_OBJECT
    QML_NAMED_ELEMENT(AnimatedGIFView)
    /// The name of a file of the resources without its extension, "gif". The first one that is
    /// found stays.
    Q_PROPERTY(
        QString resourceName READ resourceName WRITE setResourceName NOTIFY resourceNameChanged)
    Q_PROPERTY(bool playing READ isPlaying WRITE setPlaying NOTIFY playingChanged)
    /// Of the corners that the animation is cut to, in points.
    Q_PROPERTY(double radius READ radius WRITE setRadius NOTIFY radiusChanged)

  public:
    explicit AnimatedGIFView(QQuickItem* parent = nullptr);
    ~AnimatedGIFView() override;

    QString resourceName() const { return resourceName_; }
    bool isPlaying() const { return playing_; }
    double radius() const { return radius_; }
    void setResourceName(const QString& name);
    void setPlaying(bool playing);
    void setRadius(double radius);

    bool hasAnimation() const { return movie_ != nullptr; }

    void paint(QPainter* painter) override;

  signals:
    void resourceNameChanged();
    void playingChanged();
    void radiusChanged();

  private:
    void load();
    void applyPlaying();

    QString resourceName_;
    bool playing_ = true;
    double radius_ = 0;
    std::unique_ptr<QMovie> movie_;
};

}  // namespace velmora
