// SPDX-License-Identifier: MIT
#include "Velmora/Presentation/PanelWindow.h"

#include <QQuickItem>

#include "Velmora/Presentation/OverlayFlags.h"
#include "Velmora/Presentation/ShapePath.h"

namespace velmora {

PanelWindow::PanelWindow(Theme& theme) : PacedWindow(theme) {
    setFlags(overlayFlags);
    QSurfaceFormat translucent = format();
    translucent.setAlphaBufferSize(8);
    setFormat(translucent);
    setColor(Qt::transparent);
    setTitle(QStringLiteral("Velmora"));
    connect(&theme, &Theme::changed, this, [this] {
        applyAlpha();
        applyShape();
    });
}

PanelWindow::~PanelWindow() = default;

void PanelWindow::setView(std::unique_ptr<QQuickItem> view) {
    // A view may be replaced out of one of its own handlers.
    if (view_) {
        view_->setParentItem(nullptr);
        view_.release()->deleteLater();
    }
    view_ = std::move(view);
    if (view_) {
        view_->setParentItem(contentItem());
    }
}

void PanelWindow::showAt(const QRect& frame) {
    setGeometry(frame);
    if (view_) {
        view_->setSize(frame.size());
    }
    show();
    applyShape();
    raise();
}

void PanelWindow::orderOut() {
    if (shadow_) {
        shadow_->orderOut();
    }
    hide();
}

void PanelWindow::setAlpha(double alpha) {
    alpha_ = alpha;
    applyAlpha();
}

void PanelWindow::applyAlpha() {
    // A compositor that comes later would go by what was said last, so it is said at once.
    const double opacity = theme().isCompositing() ? alpha_ : 1;
    setOpacity(opacity);
    if (shadow_) {
        shadow_->setOpacity(opacity);
    }
    // It may be long after the last step of a fade that something happens on the display.
    theme().sendChanges();
}

void PanelWindow::prepare(QSize size) {
    resize(size);
    if (view_) {
        view_->setSize(size);
    }
    create();
    grabWindow();
}

void PanelWindow::prepareShadow() {
    if (theme().isCompositing()) {
        ensuredShadow().create();
    }
}

void PanelWindow::applyShape() {
    if (!isVisible() || !view_) {
        return;
    }
    const double radius = view_->property("cornerRadius").toDouble();
    if (!theme().isCompositing()) {
        if (shadow_) {
            shadow_->orderOut();
        }
        setMask(roundedRegion(QRect(QPoint(0, 0), size()), radius));
        return;
    }
    setMask(QRegion());
    ensuredShadow().surround(geometry(), radius, theme().colors().shadow);
    shadow_->orderFront();
}

ShadowWindow& PanelWindow::ensuredShadow() {
    if (!shadow_) {
        shadow_ = std::make_unique<ShadowWindow>(theme());
        shadow_->setOpacity(alpha_);
    }
    return *shadow_;
}

}  // namespace velmora
