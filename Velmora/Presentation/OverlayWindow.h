// SPDX-License-Identifier: MIT
#pragma once

#include <QRasterWindow>
#include <QTimer>

#include "Velmora/Presentation/Theme.h"

namespace velmora {

/// A translucent window above all others that lets clicks through and never takes the focus. What
/// stands beside it on the screen is more urgent: it comes a moment later, and it is painted when
/// the display has time for it. Main thread.
class OverlayWindow : public QRasterWindow {
    Q_OBJECT

  public:
    /// The theme outlives the window.
    explicit OverlayWindow(const Theme& theme);
    ~OverlayWindow() override;

    /// Puts the window above the others at once and shows it half a frame later, when window
    /// managers have begun to take in what else came to the screen now and let the display go
    /// again.
    void orderFront();
    void orderOut();

    /// Whether it is on the screen or about to come there.
    bool isWanted() const { return isWanted_; }

  protected:
    bool event(QEvent* event) override;

  private:
    void paintWhole();

    const Theme& theme_;
    QTimer appearance_;
    bool isWanted_ = false;
    bool isPaintingDue_ = false;
};

}  // namespace velmora
