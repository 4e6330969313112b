// SPDX-License-Identifier: MIT
#pragma once

namespace velmora {

/// The short notice at start that the program runs. Main thread.
class LaunchFlashPresenting {
  public:
    virtual ~LaunchFlashPresenting() = default;
    virtual void flash() = 0;
};

}  // namespace velmora
