// SPDX-License-Identifier: MIT
#pragma once

#include <QQuickWindow>

#include "Velmora/Presentation/Theme.h"

namespace velmora {

/// A window of views each of whose frames is painted when the display has time for it: painting
/// asks the display about the memory that it shares with this program. Main thread.
class PacedWindow : public QQuickWindow {
    Q_OBJECT

  public:
    /// The theme outlives the window, or at least the time in which it is visible.
    explicit PacedWindow(Theme& theme) : theme_(theme) {}
    ~PacedWindow() override;

  protected:
    bool event(QEvent* event) override;
    void exposeEvent(QExposeEvent* event) override;

    Theme& theme() const { return theme_; }

  private:
    void paintWhenAnswered();
    void paint();

    Theme& theme_;
    bool isPaintingDue_ = false;
    bool isNew_ = true;  ///< On the screen, with nothing painted there.
};

}  // namespace velmora
