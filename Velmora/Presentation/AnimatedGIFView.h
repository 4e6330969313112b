// SPDX-License-Identifier: MIT
#pragma once

#include <QtQml/qqmlregistration.h>
#include <QFutureWatcher>
#include <QQuickPaintedItem>
#include <QString>
#include <QTimer>
#include <memory>

#include "Velmora/Presentation/AnimationReader.h"

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

    bool hasAnimation() const { return reader_ != nullptr; }

    /// Waits for the first frame where that is not read yet.
    void paint(QPainter* painter) override;

  signals:
    void resourceNameChanged();
    void playingChanged();
    void radiusChanged();

  private:
    void load();
    void readNext();
    void showNext();
    void waitForNextTime();

    QString resourceName_;
    bool playing_ = true;
    double radius_ = 0;
    std::unique_ptr<AnimationReader> reader_;
    AnimationFrame frame_;                 ///< The one that is shown.
    QFutureWatcher<AnimationFrame> next_;  ///< The one behind it.
    QTimer nextTime_;
    bool isNextDue_ = true;  ///< It is to be shown as soon as it is read.
};

}  // namespace velmora
