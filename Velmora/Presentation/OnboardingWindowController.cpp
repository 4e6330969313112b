// SPDX-License-Identifier: MIT
#include "Velmora/Presentation/OnboardingWindowController.h"

#include <QQmlEngine>
#include <utility>

#include "Velmora/Presentation/ActionRelay.h"

namespace velmora {

OnboardingWindowController::OnboardingWindowController(ViewEngine& views,
                                                       const ScreenGeometrySource& screens)
    : views_(views), screens_(screens) {}

OnboardingWindowController::~OnboardingWindowController() {
    QObject::disconnect(modelGone_);
}

void OnboardingWindowController::attach(AppModel& model) {
    QObject::disconnect(modelGone_);
    model_ = &model;
    QQmlEngine::setObjectOwnership(model_, QQmlEngine::CppOwnership);
    modelGone_ = QObject::connect(model_, &QObject::destroyed, [this] {
        onComplete_ = {};
        onClose_ = {};
        window_.reset();
        prepared_.reset();
        model_ = nullptr;
    });
}

void OnboardingWindowController::prepare() {
    if (model_ != nullptr && !prepared_) {
        prepared_ = views_.create(QStringLiteral("OnboardingView"),
                                  {{QStringLiteral("model"), QVariant::fromValue<QObject*>(model_)},
                                   {QStringLiteral("isFirstLaunch"), true},
                                   {QStringLiteral("completionTitle"), QString()}});
    }
}

void OnboardingWindowController::open(bool isFirstLaunch, const std::string& completionTitle,
                                      std::function<void()> onComplete,
                                      std::function<void()> onClose) {
    close();
    onComplete_ = std::move(onComplete);
    onClose_ = std::move(onClose);
    if (model_ == nullptr) {
        return;
    }
    prepare();
    auto view = std::move(prepared_);
    if (!view) {
        return;
    }
    view->setProperty("isFirstLaunch", isFirstLaunch);
    view->setProperty("completionTitle", QString::fromStdString(completionTitle));
    ViewEngine::layoutSubtree(*view);
    ActionRelay::connectSignal(*view, SIGNAL(complete()), [this] {
        if (const auto action = onComplete_) {
            action();
        }
    });
    window_ = std::make_unique<ViewWindow>(views_.theme(), std::move(view));
    window_->setTitle(QStringLiteral("Velmora Onboarding"));
    window_->makeFrameless();
    window_->centerOn(screens_.current());
    window_->setClosedHandler([this] { close(); });
    window_->present();
}

void OnboardingWindowController::bringToFront() {
    if (window_) {
        window_->present();
    }
}

void OnboardingWindowController::close() {
    if (!window_) {
        return;
    }
    ViewWindow::dispose(std::move(window_));
    onComplete_ = {};
    if (const auto closed = std::exchange(onClose_, {})) {
        closed();
    }
}

}  // namespace velmora
