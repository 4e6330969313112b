// SPDX-License-Identifier: MIT
#pragma once

#include <QRect>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "Velmora/Platform/StatusIconPixmap.h"

namespace velmora {

/// A window with an icon that an X panel takes into its tray: asks the owner of the display's tray
/// selection to embed it, again whenever another one takes over, and is on no screen while there is
/// none. A connection of its own; never waits for another program. Main thread.
class TrayIconWindow {
  public:
    /// What is called of what happens to the icon. Its place is that in the root window, in native
    /// pixels.
    struct Handlers {
        std::function<void(const QRect& icon)> pressed;
        /// The pointer has come to the icon; null when it has left it, or the icon is gone.
        std::function<void(const QRect& icon)> hovered;
        /// The tray that had the icon is gone.
        std::function<void()> lost;
    };

    /// `name` is what panels may show of it. The display's name is empty for that of the
    /// environment.
    TrayIconWindow(std::vector<StatusIconPixmap> icon, const std::string& name, Handlers handlers,
                   const std::string& display = {});
    TrayIconWindow(const TrayIconWindow&) = delete;
    TrayIconWindow& operator=(const TrayIconWindow&) = delete;
    ~TrayIconWindow();

    /// Whether something on this display takes icons into its tray now. Any thread.
    static bool isTrayThere(const std::string& display = {});

  private:
    class Parts;
    std::unique_ptr<Parts> parts_;
};

}  // namespace velmora
