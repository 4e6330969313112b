// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <memory>

#include "Velmora/Coordination/Updates/UpdatePresenting.h"
#include "Velmora/Platform/ApplicationShell.h"
#include "Velmora/Platform/ScreenGeometrySource.h"
#include "Velmora/Presentation/ViewEngine.h"
#include "Velmora/Presentation/ViewWindow.h"

namespace velmora {

/// The update window. Main thread.
class UpdateWindowController final : public UpdatePresenting {
  public:
    /// All of them outlive the controller.
    UpdateWindowController(ViewEngine& views, const ScreenGeometrySource& screens,
                           ApplicationShell& shell);
    ~UpdateWindowController() override;

    void setActions(std::function<void()> install, std::function<void()> later) override;
    void show(const UpdateWindowState& state) override;
    void update(const UpdateWindowState& state) override;
    void close() override;

    /// Null while it is closed.
    ViewWindow* window() const { return window_.get(); }

  private:
    bool makeWindow();
    void apply(const UpdateWindowState& state);
    void fitWindow();

    ViewEngine& views_;
    const ScreenGeometrySource& screens_;
    ApplicationShell& shell_;
    std::function<void()> install_;
    std::function<void()> later_;
    std::unique_ptr<ViewWindow> window_;
};

}  // namespace velmora
