// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <optional>

#include "Velmora/Platform/StatusItem.h"

namespace velmora {

/// One tray item that appears in either of two ways. The first is always offered; the other is put
/// up besides while nobody takes the first. Whoever owns it hears of one menu. Main thread.
class SwitchingStatusItem : public StatusItem {
  public:
    SwitchingStatusItem(std::unique_ptr<StatusItem> first, std::unique_ptr<StatusItem> fallback);
    SwitchingStatusItem(const SwitchingStatusItem&) = delete;
    SwitchingStatusItem& operator=(const SwitchingStatusItem&) = delete;
    ~SwitchingStatusItem() override;

    /// Whether somebody shows the first. Until this is called nobody is known not to.
    void setFirstIsTaken(bool taken);

    void show(const StatusItemLook& look, StatusItemDelegate& delegate) override;
    void hide() override;
    void mousePressedSomewhere() override;
    void menuChanged() override;

  private:
    /// Stands between the two and the owner, who must not hear of a second menu.
    class OneMenu;

    std::unique_ptr<OneMenu> menu_;
    StatusItemLook look_;
    bool isTaken_ = true;
    std::unique_ptr<StatusItem> first_;
    std::unique_ptr<StatusItem> fallback_;
};

}  // namespace velmora
