// SPDX-License-Identifier: MIT
#pragma once

namespace velmora {

/// How the program stands in the desktop: as an agent without a taskbar entry, or as a regular
/// program. Main thread.
class ApplicationShell {
  public:
    enum class ActivationPolicy { accessory, regular };

    virtual ~ApplicationShell() = default;

    virtual void setActivationPolicy(ActivationPolicy policy) = 0;

    /// Brings our windows before those of other programs.
    virtual void activateIgnoringOtherApplications() = 0;

    /// Ends the program in an orderly way, after the current event.
    virtual void terminate() = 0;
};

}  // namespace velmora
