// SPDX-License-Identifier: MIT
#include "Velmora/Presentation/AnimatedGIFView.h"

#include <QFile>
#include <QPainter>

#include "Velmora/Presentation/ShapePath.h"

namespace velmora {

AnimatedGIFView::AnimatedGIFView(QQuickItem* parent) : QQuickPaintedItem(parent) {}

AnimatedGIFView::~AnimatedGIFView() = default;

void AnimatedGIFView::setResourceName(const QString& name) {
    if (name != resourceName_) {
        resourceName_ = name;
        emit resourceNameChanged();
        load();
    }
}

void AnimatedGIFView::setPlaying(bool playing) {
    if (playing != playing_) {
        playing_ = playing;
        emit playingChanged();
        applyPlaying();
    }
}

void AnimatedGIFView::setRadius(double radius) {
    if (radius != radius_) {
        radius_ = radius;
        emit radiusChanged();
        update();
    }
}

void AnimatedGIFView::load() {
    const QString file = QStringLiteral(":/animations/%1.gif").arg(resourceName_);
    if (movie_ || !QFile::exists(file)) {
        return;
    }
    auto movie = std::make_unique<QMovie>(file);
    if (!movie->isValid()) {
        return;
    }
    movie_ = std::move(movie);
    connect(movie_.get(), &QMovie::frameChanged, this, [this] { update(); });
    movie_->jumpToFrame(0);
    applyPlaying();
}

void AnimatedGIFView::applyPlaying() {
    if (!movie_) {
        return;
    }
    if (!playing_) {
        movie_->setPaused(true);
    } else if (movie_->state() == QMovie::NotRunning) {
        movie_->start();
    } else {
        movie_->setPaused(false);
    }
}

void AnimatedGIFView::paint(QPainter* painter) {
    if (!movie_ || width() <= 0 || height() <= 0) {
        return;
    }
    painter->setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
    if (radius_ > 0) {
        painter->setClipPath(roundedPath(boundingRect(), radius_));
    }
    const QImage frame = movie_->currentImage();
    painter->drawImage(boundingRect(), frame);
}

}  // namespace velmora
