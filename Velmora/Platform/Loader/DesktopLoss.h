// SPDX-License-Identifier: MIT
#pragma once

#include <memory>

#include "Velmora/Platform/Loader/PlatformChoice.h"

namespace velmora {

class X11ServerLoss;

/// While this lives the program ends in silence and with success when the display server goes, as
/// at the end of a session. Made once the application object is there, and gone before it.
class DesktopLoss {
  public:
    explicit DesktopLoss(const PlatformChoice& choice);
    DesktopLoss(const DesktopLoss&) = delete;
    DesktopLoss& operator=(const DesktopLoss&) = delete;
    ~DesktopLoss();

  private:
    std::unique_ptr<X11ServerLoss> x11_;
};

}  // namespace velmora
