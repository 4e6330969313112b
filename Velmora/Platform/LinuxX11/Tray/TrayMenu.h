// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QRect>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include "Velmora/Platform/DesktopAppearance.h"
#include "Velmora/Platform/MenuItem.h"

class QMenu;

namespace velmora {

/// The tray's menu as a window of our own, for the mouse and the keyboard. Needs the toolkit's
/// widgets. Main thread.
class TrayMenu final : public QObject {
  public:
    TrayMenu();
    ~TrayMenu() override;

    /// Shows these entries beside the icon, whose place is in native pixels of the root window, in
    /// light or dark. `closed` is called once when the menu is gone, before the chosen entry's
    /// action.
    void open(const std::vector<MenuItem>& items, const QRect& icon,
              std::optional<DesktopAppearance::ColorScheme> scheme, std::function<void()> closed);

    /// Shows other entries in place; those that differ in texts and states alone keep their places.
    void update(const std::vector<MenuItem>& items);

    bool isOpen() const { return menu_ != nullptr; }
    /// Whether the pointer is over the menu or a submenu of it.
    bool isUnderPointer() const;
    void close();

  private:
    void fill(QMenu& menu, const std::vector<MenuItem>& items);
    void choose(const std::function<void()>& action);
    void finish();

    std::unique_ptr<QMenu> menu_;
    std::vector<MenuItem> items_;
    std::function<void()> closed_;
};

}  // namespace velmora
