// SPDX-License-Identifier: MIT
#include "Velmora/Presentation/PacedWindow.h"

namespace velmora {

PacedWindow::~PacedWindow() = default;

bool PacedWindow::event(QEvent* event) {
    if (event->type() == QEvent::UpdateRequest) {
        paintWhenAnswered();
        return true;
    }
    return QQuickWindow::event(event);
}

/// A window that comes to the screen meets many events at once; its first frame follows them.
void PacedWindow::exposeEvent(QExposeEvent* event) {
    isNew_ = true;
    if (isExposed()) {
        paintWhenAnswered();
    } else {
        QQuickWindow::exposeEvent(event);
    }
}

/// A window that was put away for good may still be told of frames that are due, even when the
/// theme is gone.
void PacedWindow::paintWhenAnswered() {
    if (isVisible() && !isPaintingDue_) {
        isPaintingDue_ = true;
        theme_.whenAnswered(*this, [this] { paint(); });
    }
}

void PacedWindow::paint() {
    isPaintingDue_ = false;
    if (!isExposed() || !isVisible()) {
        return;
    }
    if (isNew_) {
        isNew_ = false;
        QExposeEvent whole(QRect(QPoint(0, 0), size()));
        QQuickWindow::exposeEvent(&whole);
    } else {
        QEvent update(QEvent::UpdateRequest);
        QQuickWindow::event(&update);
    }
}

}  // namespace velmora
