// SPDX-License-Identifier: MIT
#pragma once

#include <memory>

#include "Velmora/Presentation/PacedWindow.h"
#include "Velmora/Presentation/ShadowWindow.h"
#include "Velmora/Presentation/Theme.h"

namespace velmora {

/// A floating window that shows one view and never takes the focus. Its corners are round by
/// translucency, with a shadow around it, where the desktop blends windows, and by the window's
/// shape where it does not. Follows the theme.
class PanelWindow : public PacedWindow {
    Q_OBJECT

  public:
    /// The theme outlives the window.
    explicit PanelWindow(Theme& theme);
    ~PanelWindow() override;

    /// Replaces what the window shows; the corners get the view's `cornerRadius`.
    void setView(std::unique_ptr<QQuickItem> view);
    QQuickItem* view() const { return view_.get(); }

    /// Shows the panel in this place (Qt's logical coordinates), above everything. Its frame is
    /// painted when the display has time for it, its shadow comes a moment later.
    void showAt(const QRect& frame);
    void orderOut();

    /// How much of the panel and its shadow is to be seen, 0…1, where the desktop blends windows;
    /// all of it to begin with.
    void setAlpha(double alpha);
    double alpha() const { return alpha_; }

    /// Makes everything that the first frame needs, without showing the window.
    void prepare(QSize size);
    /// The same for the shadow, where there is to be one.
    void prepareShadow();

    const ShadowWindow* shadow() const { return shadow_.get(); }

  private:
    void applyAlpha();
    void applyShape();
    ShadowWindow& ensuredShadow();

    std::unique_ptr<QQuickItem> view_;
    std::unique_ptr<ShadowWindow> shadow_;
    double alpha_ = 1;
};

}  // namespace velmora
