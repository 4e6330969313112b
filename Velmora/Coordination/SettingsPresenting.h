// SPDX-License-Identifier: MIT
#pragma once

namespace velmora {

/// Shows the settings window. Main thread.
class SettingsPresenting {
  public:
    virtual ~SettingsPresenting() = default;
    virtual void showSettings() = 0;
};

}  // namespace velmora
