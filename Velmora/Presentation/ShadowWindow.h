// SPDX-License-Identifier: MIT
#pragma once

#include <QImage>
#include "Velmora/Presentation/OverlayWindow.h"

namespace velmora {

/// The soft shadow around a panel, in a window of its own, so that the panel's own window is
/// exactly the panel. Only for desktops that blend windows.
class ShadowWindow : public OverlayWindow {
    Q_OBJECT

  public:
    /// How far the shadow reaches beyond the panel, in points.
    static constexpr int margin = 30;

    /// The theme outlives the window.
    explicit ShadowWindow(const Theme& theme);

    /// Takes its place around a panel (Qt's logical coordinates) with corners of this radius.
    void surround(const QRect& panel, double radius, const QColor& color);

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    void renderTile(double ratio);

    double radius_ = 0;
    QColor color_;
    double tileRatio_ = 0;
    int tileCorner_ = 0;  ///< Device pixels of the tile's corners; one more pixel between them.
    QImage tile_;
};

}  // namespace velmora
