// SPDX-License-Identifier: MIT
#include "Velmora/Presentation/OverlayWindow.h"

#include <QPaintEvent>
#include <chrono>

#include "Velmora/Presentation/OverlayFlags.h"

namespace velmora {

namespace {

/// A compositor needs about a tenth of it to hear of a new window.
constexpr std::chrono::milliseconds halfFrame{8};

}  // namespace

OverlayWindow::OverlayWindow(const Theme& theme) : theme_(theme) {
    setFlags(clickThroughFlags);
    QSurfaceFormat translucent = format();
    translucent.setAlphaBufferSize(8);
    setFormat(translucent);
    appearance_.setSingleShot(true);
    appearance_.setTimerType(Qt::PreciseTimer);
    connect(&appearance_, &QTimer::timeout, this, [this] {
        theme_.whenAnswered(*this, [this] {
            if (isWanted_) {
                show();
            }
        });
    });
}

OverlayWindow::~OverlayWindow() = default;

void OverlayWindow::orderFront() {
    isWanted_ = true;
    create();
    raise();
    if (!isVisible() && !appearance_.isActive()) {
        appearance_.start(halfFrame);
    }
}

void OverlayWindow::orderOut() {
    isWanted_ = false;
    appearance_.stop();
    hide();
}

/// Painting asks the display about the memory that it shares with this program.
bool OverlayWindow::event(QEvent* event) {
    if (event->type() != QEvent::Paint && event->type() != QEvent::UpdateRequest) {
        return QRasterWindow::event(event);
    }
    if (!isPaintingDue_) {
        isPaintingDue_ = true;
        theme_.whenAnswered(*this, [this] { paintWhole(); });
    }
    return true;
}

void OverlayWindow::paintWhole() {
    isPaintingDue_ = false;
    if (isExposed()) {
        QPaintEvent whole(QRect(QPoint(0, 0), size()));
        QRasterWindow::event(&whole);
    }
}

}  // namespace velmora
