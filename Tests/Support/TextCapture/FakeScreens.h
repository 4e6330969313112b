// SPDX-License-Identifier: MIT
#pragma once

#include <vector>

#include "Velmora/Platform/Screens.h"

namespace velmora {

/// One screen of 1600 × 1000 points unless a test says otherwise.
class FakeScreens final : public Screens {
  public:
    std::vector<Screen> all() const override { return list; }

    std::vector<Screen> list = {{{0, 0, 1600, 1000}, {0, 0, 1600, 1000}}};
};

}  // namespace velmora
