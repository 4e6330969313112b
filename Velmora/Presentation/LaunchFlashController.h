// SPDX-License-Identifier: MIT
#pragma once

#include <QEasingCurve>
#include <memory>

#include "Velmora/Coordination/LaunchFlashPresenting.h"
#include "Velmora/Platform/Clock.h"
#include "Velmora/Platform/ScreenGeometrySource.h"
#include "Velmora/Presentation/PanelWindow.h"
#include "Velmora/Presentation/ViewEngine.h"

namespace velmora {

/// A badge near the top of the primary screen that says, for a moment, that the program runs. It
/// lets every click through and never has the focus. Where windows cannot be translucent it comes
/// and goes at once. Main thread.
class LaunchFlashController final : public LaunchFlashPresenting {
  public:
    /// Seconds from the start of the fade-in to the start of the fade-out, and of either fade.
    static constexpr double visibleDuration = 1.6;
    static constexpr double fadeInDuration = 0.22;
    static constexpr double fadeOutDuration = 0.4;

    /// All of them outlive the controller.
    LaunchFlashController(Clock& clock, const ScreenGeometrySource& screens, ViewEngine& views);
    ~LaunchFlashController() override;

    /// Makes the badge in advance, without showing it.
    void prepare();

    /// Shows the badge; while it is there already, for its whole time once more.
    void flash() override;

    /// Null before the first flash.
    const PanelWindow* panel() const { return panel_.get(); }

  private:
    bool ensurePanel();
    QSize size() const;
    QRect frame() const;
    void fadeOut();
    void fade(double target, double duration, const QEasingCurve& curve);
    void step();

    Clock& clock_;
    const ScreenGeometrySource& screens_;
    ViewEngine& views_;
    std::unique_ptr<PanelWindow> panel_;
    std::unique_ptr<OneShotTimer> dismissWorkItem_;

    // The fade under way.
    std::unique_ptr<OneShotTimer> nextStep_;
    QEasingCurve curve_;
    double start_ = 0;  ///< Uptime.
    double duration_ = 0;
    double from_ = 0;
    double target_ = 0;
};

}  // namespace velmora
