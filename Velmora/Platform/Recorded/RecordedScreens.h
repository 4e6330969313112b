// SPDX-License-Identifier: MIT
#pragma once

#include <vector>

#include "Velmora/Platform/Recorded/Recording.h"
#include "Velmora/Platform/ScreenGeometrySource.h"
#include "Velmora/Platform/Screens.h"

namespace velmora {

/// The screens of a recording.
class RecordedScreens final : public Screens, public ScreenGeometrySource {
  public:
    explicit RecordedScreens(const Recording& recording) : geometry_(recording.screens) {}

    std::vector<Screen> all() const override { return geometry_.screens(); }
    ScreenGeometry current() const override { return geometry_; }

  private:
    ScreenGeometry geometry_;
};

}  // namespace velmora
