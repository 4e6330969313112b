// SPDX-License-Identifier: MIT
#include "Velmora/Presentation/LaunchFlashController.h"

#include <QQuickItem>
#include <algorithm>
#include <cmath>
#include <vector>

#include "Velmora/Presentation/OverlayFlags.h"

namespace velmora {

namespace {

constexpr double cornerRadius = 20;
constexpr double distanceFromTop = 24;
constexpr double secondsPerStep = 1.0 / 60;
constexpr double leastStep = 0.001;  ///< No timer is finer.

QEasingCurve bezier(QPointF first, QPointF second) {
    QEasingCurve curve(QEasingCurve::BezierSpline);
    curve.addCubicBezierSegment(first, second, {1, 1});
    return curve;
}

QEasingCurve easeOut() {
    return bezier({0, 0}, {0.58, 1});
}

QEasingCurve easeIn() {
    return bezier({0.42, 0}, {1, 1});
}

}  // namespace

LaunchFlashController::LaunchFlashController(Clock& clock, const ScreenGeometrySource& screens,
                                             ViewEngine& views)
    : clock_(clock), screens_(screens), views_(views) {}

LaunchFlashController::~LaunchFlashController() = default;

void LaunchFlashController::prepare() {
    if (ensurePanel()) {
        panel_->prepare(size());
        panel_->prepareShadow();
    }
}

void LaunchFlashController::flash() {
    if (!ensurePanel()) {
        return;
    }
    nextStep_.reset();
    panel_->setAlpha(0);
    panel_->showAt(frame());
    fade(1, fadeInDuration, easeOut());
    dismissWorkItem_ = clock_.schedule(visibleDuration, [this] { fadeOut(); });
}

bool LaunchFlashController::ensurePanel() {
    if (panel_) {
        return true;
    }
    auto view = views_.create(QStringLiteral("LaunchFlashView"),
                              {{QStringLiteral("cornerRadius"), cornerRadius}});
    if (!view) {
        return false;
    }
    panel_ = std::make_unique<PanelWindow>(views_.theme());
    panel_->setFlags(clickThroughFlags);
    panel_->setView(std::move(view));
    return true;
}

QSize LaunchFlashController::size() const {
    return {static_cast<int>(std::ceil(panel_->view()->implicitWidth())),
            static_cast<int>(std::ceil(panel_->view()->implicitHeight()))};
}

QRect LaunchFlashController::frame() const {
    const QSize size = this->size();
    const ScreenGeometry geometry = screens_.current();
    const std::vector<Screen> screens = geometry.screens();
    if (screens.empty()) {
        return {panel_->position(), size};
    }
    const Rect visible = screens.front().visibleFrame;
    const Rect place = geometry.logicalFromScreen(
        Rect{visible.midX() - size.width() / 2.0, visible.maxY() - size.height() - distanceFromTop,
             static_cast<double>(size.width()), static_cast<double>(size.height())});
    return {{static_cast<int>(std::lround(place.x)), static_cast<int>(std::lround(place.y))}, size};
}

void LaunchFlashController::fadeOut() {
    fade(0, fadeOutDuration, easeIn());
}

void LaunchFlashController::fade(double target, double duration, const QEasingCurve& curve) {
    curve_ = curve;
    start_ = clock_.uptime();
    duration_ = views_.theme().isCompositing() ? duration : 0;
    from_ = panel_->alpha();
    target_ = target;
    step();
}

void LaunchFlashController::step() {
    const double elapsed = clock_.uptime() - start_;
    const double progress =
        elapsed >= duration_ - leastStep ? 1 : std::max(0.0, elapsed / duration_);
    panel_->setAlpha(from_ + (target_ - from_) * curve_.valueForProgress(progress));
    if (progress < 1) {
        nextStep_ =
            clock_.schedule(std::min(secondsPerStep, duration_ - elapsed), [this] { step(); });
    } else if (target_ == 0) {
        panel_->orderOut();
    }
}

}  // namespace velmora
