// SPDX-License-Identifier: MIT
#include "Velmora/Presentation/HighlightOverlayController.h"

namespace velmora {

namespace {

/// Keeps the line off the characters.
constexpr double outset = 3;

}  // namespace

HighlightOverlayController::HighlightOverlayController(const ScreenGeometrySource& screens,
                                                       Theme& theme)
    : screens_(screens), theme_(theme) {
    themeChanged_ = QObject::connect(&theme_, &Theme::changed, [this] {
        if (panel_ && panel_->isWanted()) {
            place();
        }
    });
}

HighlightOverlayController::~HighlightOverlayController() {
    QObject::disconnect(themeChanged_);
}

void HighlightOverlayController::prepare() {
    ensurePanel();
    panel_->create();
}

void HighlightOverlayController::ensurePanel() {
    if (!panel_) {
        panel_ = std::make_unique<HighlightView>(theme_);
    }
}

void HighlightOverlayController::show(const Rect& rect) {
    if (rect.isEmpty() || !rect.isFinite()) {
        orderOut();
        return;
    }
    ensurePanel();
    frame_ = rect.grownBy(outset);
    place();
    panel_->orderFront();
}

void HighlightOverlayController::orderOut() {
    if (panel_) {
        panel_->orderOut();
    }
}

void HighlightOverlayController::place() {
    const Rect frame = screens_.current().logicalFromScreen(frame_);
    panel_->place({frame.x, frame.y, frame.width, frame.height}, theme_.accent(),
                  theme_.isCompositing());
}

}  // namespace velmora
