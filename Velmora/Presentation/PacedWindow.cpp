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

void PacedWindow::paintWhenAnswered() {
    if (!isPaintingDue_) {
        isPaintingDue_ = true;
        theme_.whenAnswered(*this, [this] { paint(); });
    }
}

void PacedWindow::paint() {
    isPaintingDue_ = false;
    if (!isExposed()) {
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
