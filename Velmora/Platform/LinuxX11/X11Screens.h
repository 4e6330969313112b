// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <string>

#include "Velmora/Platform/ScreenGeometrySource.h"
#include "Velmora/Platform/Screens.h"

namespace velmora {

/// The screens as Qt counts them, with the native pixels and the panels that the X server knows
/// (Qt's own available geometry is the whole screen as soon as there are several). Follows every
/// change. Made and ended on the main thread while a QGuiApplication runs; needs its event loop;
/// readable from any thread.
class X11Screens : public Screens, public ScreenGeometrySource {
  public:
    /// The display's name is empty for that of the environment.
    explicit X11Screens(const std::string& display = {});
    ~X11Screens() override;

    std::vector<Screen> all() const override;
    ScreenGeometry current() const override;

  private:
    struct Parts;
    std::unique_ptr<Parts> parts_;
};

}  // namespace velmora
