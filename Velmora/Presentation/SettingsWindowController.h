// SPDX-License-Identifier: MIT
#pragma once

#include <memory>

#include "Velmora/Coordination/AppModel.h"
#include "Velmora/Coordination/SettingsPresenting.h"
#include "Velmora/Platform/ApplicationShell.h"
#include "Velmora/Platform/ScreenGeometrySource.h"
#include "Velmora/Platform/Settings.h"
#include "Velmora/Presentation/ViewEngine.h"
#include "Velmora/Presentation/ViewWindow.h"

namespace velmora {

/// Shows the settings window: a new one each time, in the place of the one before. Where it stood
/// is remembered when it closes. Main thread.
class SettingsWindowController final : public SettingsPresenting {
  public:
    /// Where the window stands: "x y width height" of its content, in Qt's logical coordinates.
    static constexpr const char* frameKey = "Windows/Velmora Settings";

    /// All of them outlive the controller.
    SettingsWindowController(ViewEngine& views, const ScreenGeometrySource& screens,
                             ApplicationShell& shell, Settings& settings);
    ~SettingsWindowController() override;

    /// What the window shows; until then, and after the model is gone, there is no window.
    void attach(AppModel& model);

    void showSettings() override;

    /// Null while it is closed.
    ViewWindow* window() const { return window_.get(); }

  private:
    void restoreFrame();
    void rememberFrame();
    void closeWindow();

    ViewEngine& views_;
    const ScreenGeometrySource& screens_;
    ApplicationShell& shell_;
    Settings& settings_;
    AppModel* model_ = nullptr;
    QMetaObject::Connection modelGone_;
    std::unique_ptr<ViewWindow> window_;
};

}  // namespace velmora
