// SPDX-License-Identifier: MIT
#include "Velmora/Presentation/ViewWindow.h"

#include <QKeyEvent>
#include <algorithm>
#include <cmath>
#include <utility>

#include "Velmora/Presentation/ProgramIcon.h"
#include "Velmora/Presentation/ShapePath.h"

namespace velmora {

namespace {

/// What a title bar takes of the screen's height, about, in points.
constexpr double titleBarHeight = 36;

QSize wholeSize(const QQuickItem& view) {
    return {static_cast<int>(std::ceil(view.implicitWidth())),
            static_cast<int>(std::ceil(view.implicitHeight()))};
}

}  // namespace

ViewWindow::ViewWindow(Theme& theme, std::unique_ptr<QQuickItem> view)
    : PacedWindow(theme), view_(std::move(view)) {
    view_->setParentItem(contentItem());
    resize(wholeSize(*view_));
    view_->setSize(size());
    connect(this, &QWindow::widthChanged, this, [this] { view_->setSize(size()); });
    connect(this, &QWindow::heightChanged, this, [this] { view_->setSize(size()); });
    connect(&theme, &Theme::changed, this, &ViewWindow::applyTheme);
    applyTheme();
}

ViewWindow::~ViewWindow() = default;

void ViewWindow::makeFrameless() {
    setFlags(Qt::Window | Qt::FramelessWindowHint);
    QSurfaceFormat translucent = format();
    translucent.setAlphaBufferSize(8);
    setFormat(translucent);
    setMinimumSize(size());
    setMaximumSize(size());
    applyTheme();
}

void ViewWindow::makeTitled(const Rect& visibleFrame) {
    setFlags(Qt::Window | Qt::CustomizeWindowHint | Qt::WindowTitleHint | Qt::WindowSystemMenuHint |
             Qt::WindowMinimizeButtonHint | Qt::WindowCloseButtonHint);
    const int room = static_cast<int>(visibleFrame.height - titleBarHeight);
    if (room > titleBarHeight) {
        resize(width(), std::min(height(), room));
    }
    setMinimumSize(size());
    setMaximumSize(size());
}

void ViewWindow::centerOn(const ScreenGeometry& screens) {
    const std::vector<Screen> all = screens.screens();
    if (all.empty()) {
        return;
    }
    const Rect room = screens.logicalFromScreen(all.front().visibleFrame);
    setPosition(static_cast<int>(std::lround(room.midX() - width() / 2.0)),
                static_cast<int>(std::lround(room.midY() - height() / 2.0)));
}

void ViewWindow::present() {
    view_->setFocus(true);
    if (isVisible()) {
        bringUp();
    } else if (!isComing_) {
        isComing_ = true;
        comeWhenAnswered();
    }
}

/// The toolkit keeps what is asked of a window on its way to the screen until it is there, and then
/// waits for the display.
void ViewWindow::bringUp() {
    if (hasCome_) {
        raise();
        requestActivate();
    }
}

void ViewWindow::comeWhenAnswered() {
    theme().whenAnswered(*this, [this] {
        if (isComing_) {
            comeNearer();
        }
    });
}

void ViewWindow::comeNearer() {
    if (handle() == nullptr) {
        create();
        applyShape();
    } else if (icon().isNull()) {
        setIcon(drawProgramIcon());
    } else if (!isDrawn_) {
        // The frame is kept and on the screen as soon as the window is.
        isDrawn_ = true;
        grabWindow();
    } else {
        isComing_ = false;
        show();
        return;
    }
    comeWhenAnswered();
}

/// Without a window manager nobody makes a new window active.
void ViewWindow::exposeEvent(QExposeEvent* event) {
    PacedWindow::exposeEvent(event);
    if (isExposed() && isVisible() && !hasCome_) {
        hasCome_ = true;
        theme().whenAnswered(*this, [this] {
            if (isVisible() && !isActive()) {
                requestActivate();
            }
        });
    }
}

void ViewWindow::dispose(std::unique_ptr<ViewWindow> window) {
    if (window) {
        window->closed_ = {};
        window->isComing_ = false;
        QObject::disconnect(&window->theme(), nullptr, window.get(), nullptr);
        window->hide();
        window.release()->deleteLater();
    }
}

bool ViewWindow::event(QEvent* event) {
    if (event->type() != QEvent::Close) {
        return PacedWindow::event(event);  // One kind of them frees this.
    }
    closingFrame_ = geometry();
    const bool handled = PacedWindow::event(event);
    isClosed_ = isClosed_ || event->isAccepted();
    if (event->isAccepted() && closed_) {
        std::exchange(closed_, {})();
    }
    return handled;
}

void ViewWindow::applyTheme() {
    if (!isFrameless()) {
        setColor(theme().colors().window);
        return;
    }
    setColor(theme().isCompositing() ? QColor(Qt::transparent) : theme().colors().window);
    applyShape();
}

/// Only a window that is made has a shape.
void ViewWindow::applyShape() {
    if (handle() == nullptr || !isFrameless()) {
        return;
    }
    const double radius = view_->property("cornerRadius").toDouble();
    setMask(theme().isCompositing() ? QRegion()
                                    : roundedRegion(QRect(QPoint(0, 0), size()), radius));
}

}  // namespace velmora
