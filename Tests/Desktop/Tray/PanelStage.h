// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "Tests/Desktop/Support/RunningVelmora.h"
#include "Tests/Support/VirtualDesktop/VirtualDesktop.h"

namespace velmora::test {

/// A virtual desktop with our program and real panels. Each panel shows nothing but a tray, at a
/// place where its first icon is known to be.
class PanelStage {
  public:
    struct Panel {
        std::string name;
        std::vector<std::string> command;
        Rect icon;  ///< Where its first icon appears.
    };

    PanelStage();

    /// Embeds icons; knows nothing of the session bus. At the bottom left.
    Panel tint2() const;
    /// Shows items of the session bus. At the top right.
    static Panel xfce4Panel();

    ChildProcess& start(const Panel& panel) { return desktop_.launch(panel.command); }
    void startVelmora() { velmora_.emplace(desktop_); }

    VirtualDesktop& desktop() { return desktop_; }
    RunningVelmora& velmora() { return *velmora_; }

    /// Whether our white character comes to be, or not to be, at this panel's place.
    bool iconIsShown(const Panel& panel, bool shown = true);

    /// Presses the icon and waits for the menu that this makes appear.
    VirtualDesktop::Window openMenu(const Panel& panel, unsigned button = 1);
    bool menuIsGone(const VirtualDesktop::Window& menu);

    /// Clicks at this height of a menu; from its bottom where it is negative.
    void clickEntry(const VirtualDesktop::Window& menu, int y);

    /// Our own diagnostics come to hold this line.
    bool comesToSay(const std::string& line);

    void keepPicture(const std::string& name);
    std::string log() const { return desktop_.log(); }

  private:
    VirtualDesktop desktop_;
    std::string tint2Settings_;
    std::optional<RunningVelmora> velmora_;
};

}  // namespace velmora::test
