// SPDX-License-Identifier: MIT
#pragma once

#include <memory>

#include "Velmora/Platform/ApplicationShell.h"

namespace velmora {

/// Tells window managers how the application's own windows stand in the desktop, over the
/// application's connection, so that it is in step with what Qt asks for. Main thread, while a
/// QGuiApplication runs; without an X display only ending the program has an effect.
///
/// As an accessory the windows have no entry in taskbars and pagers. Panels, which no window
/// manager takes care of, are left alone.
class X11ApplicationShell : public ApplicationShell {
  public:
    /// Begins as an accessory.
    X11ApplicationShell();
    ~X11ApplicationShell() override;

    void setActivationPolicy(ActivationPolicy policy) override;
    void activateIgnoringOtherApplications() override;
    void terminate() override;

  private:
    class Parts;
    std::unique_ptr<Parts> parts_;
};

}  // namespace velmora
