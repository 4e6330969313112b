// SPDX-License-Identifier: MIT
#pragma once

namespace velmora {

class AppModel;

/// The program's item in the desktop's tray. Made once by the model at the end of its
/// initialisation. Main thread.
class StatusBarPresenting {
  public:
    virtual ~StatusBarPresenting() = default;

    /// Puts the item up for this model, which outlives it.
    virtual void attach(AppModel& model) = 0;
};

}  // namespace velmora
