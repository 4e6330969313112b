// SPDX-License-Identifier: MIT
#pragma once

#include <utility>
#include <vector>

#include "Velmora/Platform/ScreenGeometrySource.h"

namespace velmora::test {

/// Screens that stand as the test says.
class FixedScreens : public ScreenGeometrySource {
  public:
    explicit FixedScreens(std::vector<ScreenLayout> layouts) : geometry_(std::move(layouts)) {}

    ScreenGeometry current() const override { return geometry_; }
    void set(std::vector<ScreenLayout> layouts) { geometry_ = ScreenGeometry(std::move(layouts)); }

  private:
    ScreenGeometry geometry_;
};

}  // namespace velmora::test
