// SPDX-License-Identifier: MIT
#pragma once

#include <memory>

#include "Velmora/Platform/Clock.h"
#include "Velmora/Platform/StatusItem.h"

namespace velmora {

/// A tray item as desktops know it on the session bus: an `org.kde.StatusNotifierItem` whose menu
/// is a `com.canonical.dbusmenu`. It registers with whatever watcher is there now or comes later.
/// Without a session bus nothing happens. Never waits for another program. Main thread.
class StatusNotifierItem final : public StatusItem {
  public:
    /// The clock outlives the item.
    explicit StatusNotifierItem(Clock& clock);
    StatusNotifierItem(const StatusNotifierItem&) = delete;
    StatusNotifierItem& operator=(const StatusNotifierItem&) = delete;
    ~StatusNotifierItem() override;

    void show(const StatusItemLook& look, StatusItemDelegate& delegate) override;
    void hide() override;
    void mousePressedSomewhere() override;
    void menuChanged() override;

  private:
    class Parts;
    Clock& clock_;
    std::unique_ptr<Parts> parts_;
};

}  // namespace velmora
