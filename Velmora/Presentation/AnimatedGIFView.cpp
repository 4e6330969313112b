// SPDX-License-Identifier: MIT
#include "Velmora/Presentation/AnimatedGIFView.h"

#include <QFile>
#include <QPainter>

#include "Velmora/Presentation/ShapePath.h"

namespace velmora {

AnimatedGIFView::AnimatedGIFView(QQuickItem* parent) : QQuickPaintedItem(parent) {
    connect(&next_, &QFutureWatcherBase::finished, this, &AnimatedGIFView::showNext);
    nextTime_.setSingleShot(true);
    connect(&nextTime_, &QTimer::timeout, this, [this] {
        isNextDue_ = true;
        showNext();
    });
}

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
        waitForNextTime();
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
    if (reader_ || !QFile::exists(file)) {
        return;
    }
    auto reader = std::make_unique<AnimationReader>(file);
    if (!reader->isValid()) {
        return;
    }
    reader_ = std::move(reader);
    readNext();
}

void AnimatedGIFView::readNext() {
    next_.setFuture(reader_->next());
}

void AnimatedGIFView::showNext() {
    const bool isWanted = playing_ || frame_.image.isNull();
    if (!isNextDue_ || !isWanted || !next_.isFinished()) {
        return;
    }
    isNextDue_ = false;
    frame_ = next_.result();
    update();
    if (!frame_.image.isNull()) {
        readNext();
        waitForNextTime();
    }
}

/// A frame stays for its whole time once more after a pause.
void AnimatedGIFView::waitForNextTime() {
    if (playing_ && !frame_.image.isNull()) {
        nextTime_.start(frame_.delay);
    } else {
        nextTime_.stop();
    }
}

void AnimatedGIFView::paint(QPainter* painter) {
    if (!reader_ || width() <= 0 || height() <= 0) {
        return;
    }
    if (frame_.image.isNull()) {
        next_.waitForFinished();
        showNext();
    }
    painter->setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
    if (radius_ > 0) {
        painter->setClipPath(roundedPath(boundingRect(), radius_));
    }
    painter->drawImage(boundingRect(), frame_.image);
}

}  // namespace velmora
