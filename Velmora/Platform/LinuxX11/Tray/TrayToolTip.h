// SPDX-License-Identifier: MIT
#pragma once

#include <QLabel>
#include <QRect>
#include <QString>
#include <QTimer>
#include <memory>
#include <string>

#include "Velmora/Platform/DesktopAppearance.h"

namespace velmora {

/// What a pointer that rests on the tray's icon reads beside it. Panels that embed icons leave that
/// to the icon's program. Takes neither the mouse nor the keyboard. Needs the toolkit's widgets.
/// Main thread.
class TrayToolTip {
  public:
    /// No text shows nothing. The appearance outlives the tool tip.
    TrayToolTip(const std::string& text, const DesktopAppearance& appearance);
    TrayToolTip(const TrayToolTip&) = delete;
    TrayToolTip& operator=(const TrayToolTip&) = delete;
    ~TrayToolTip();

    /// The pointer is on the icon, whose place is in native pixels of the root window: the text
    /// comes in a moment and stays until it is hidden.
    void showSoon(const QRect& icon);
    void hide();

  private:
    void show();

    QString text_;
    const DesktopAppearance& appearance_;
    QRect icon_;
    QTimer moment_;
    std::unique_ptr<QLabel> label_;  ///< While it is on the screen.
};

}  // namespace velmora
