// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <memory>
#include <string>

#include "Velmora/Coordination/AppModel.h"
#include "Velmora/Coordination/OnboardingPresenting.h"
#include "Velmora/Platform/ScreenGeometrySource.h"
#include "Velmora/Presentation/ViewEngine.h"
#include "Velmora/Presentation/ViewWindow.h"

namespace velmora {

/// Makes and closes the onboarding window: borderless, round, moved by its background. Main thread.
class OnboardingWindowController final : public OnboardingPresenting {
  public:
    /// Both outlive the controller.
    OnboardingWindowController(ViewEngine& views, const ScreenGeometrySource& screens);
    ~OnboardingWindowController() override;

    /// What the window shows; until then, and after the model is gone, there is no window.
    void attach(AppModel& model);

    /// Makes the view in advance that the next window shows.
    void prepare();

    void open(bool isFirstLaunch, const std::string& completionTitle,
              std::function<void()> onComplete, std::function<void()> onClose) override;
    void bringToFront() override;
    void close() override;

    /// Null while it is closed.
    ViewWindow* window() const { return window_.get(); }

  private:
    ViewEngine& views_;
    const ScreenGeometrySource& screens_;
    AppModel* model_ = nullptr;
    QMetaObject::Connection modelGone_;
    std::function<void()> onComplete_;
    std::function<void()> onClose_;
    std::unique_ptr<ViewWindow> window_;
    std::unique_ptr<QQuickItem> prepared_;  ///< The next window's view.
};

}  // namespace velmora
