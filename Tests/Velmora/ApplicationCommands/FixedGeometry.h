// SPDX-License-Identifier: MIT
#pragma once

#include <utility>
#include <vector>

#include "Velmora/Platform/ScreenGeometrySource.h"

namespace velmora {

/// Screens that never change.
class FixedGeometry final : public ScreenGeometrySource {
  public:
    explicit FixedGeometry(std::vector<ScreenLayout> layouts) : geometry_(std::move(layouts)) {}

    ScreenGeometry current() const override { return geometry_; }

  private:
    ScreenGeometry geometry_;
};

}  // namespace velmora
