// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <string>

#include "Velmora/Platform/DesktopAppearance.h"
#include "Velmora/Platform/StatusItem.h"

namespace velmora {

/// A tray item for X panels that embed windows: an icon in the panel, and a menu of our own that
/// any button opens. Needs the toolkit's widgets. Main thread.
class EmbeddedTrayItem final : public StatusItem {
  public:
    /// The appearance outlives the item. The display's name is empty for that of the environment.
    explicit EmbeddedTrayItem(const DesktopAppearance& appearance, std::string display = {});
    EmbeddedTrayItem(const EmbeddedTrayItem&) = delete;
    EmbeddedTrayItem& operator=(const EmbeddedTrayItem&) = delete;
    ~EmbeddedTrayItem() override;

    void show(const StatusItemLook& look, StatusItemDelegate& delegate) override;
    void hide() override;
    void mousePressedSomewhere() override;
    void menuChanged() override;

  private:
    class Parts;
    const DesktopAppearance& appearance_;
    std::string display_;
    std::unique_ptr<Parts> parts_;
};

}  // namespace velmora
