// SPDX-License-Identifier: MIT
#pragma once

#include <memory>

#include "Velmora/Platform/DesktopAppearance.h"

namespace velmora {

/// The desktop's preference as its settings portal states it on the session bus. Desktops without
/// that portal state none. Asks once when made and again when the portal announces a change.
class PortalAppearance : public DesktopAppearance {
  public:
    PortalAppearance();
    ~PortalAppearance() override;

    std::optional<ColorScheme> colorScheme() const override;
    void observe(Observer observer) override;

  private:
    class Listener;
    std::unique_ptr<Listener> listener_;
};

}  // namespace velmora
