// SPDX-License-Identifier: MIT
#pragma once

#include <QColor>
#include <QRectF>

#include "Velmora/Presentation/OverlayWindow.h"

namespace velmora {

/// The window that outlines characters.
class HighlightView : public OverlayWindow {
    Q_OBJECT

  public:
    /// The theme outlives the window.
    explicit HighlightView(const Theme& theme);

    /// Takes this frame (Qt's logical coordinates, fractions allowed). Where the desktop does not
    /// blend windows, the window has the shape of the outline alone, in its full colour.
    void place(const QRectF& frame, const QColor& accent, bool compositing);

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    QRectF outlinePath() const;
    void applyShape();

    QRectF frame_;  ///< The frame within the window, whose edges are whole points.
    QColor accent_;
    bool compositing_ = false;
};

}  // namespace velmora
