// SPDX-License-Identifier: MIT
#include "Velmora/Presentation/UpdateWindowController.h"

#include <QString>
#include <cmath>
#include <utility>

#include "Velmora/Presentation/ActionRelay.h"

namespace velmora {

namespace {

/// More than anyone reads, and laid out in no time.
constexpr qsizetype longestNotes = 20000;
constexpr qsizetype longestLine = 500;

QString phaseName(UpdateWindowState::Phase phase) {
    switch (phase) {
        case UpdateWindowState::Phase::checking:
            return QStringLiteral("checking");
        case UpdateWindowState::Phase::available:
            return QStringLiteral("available");
        case UpdateWindowState::Phase::downloading:
            return QStringLiteral("downloading");
        case UpdateWindowState::Phase::message:
            break;
    }
    return QStringLiteral("message");
}

QString bounded(const std::string& text, qsizetype length) {
    return QString::fromStdString(text).left(length);
}

void call(const std::function<void()>& action) {
    if (action) {
        action();
    }
}

}  // namespace

UpdateWindowController::UpdateWindowController(ViewEngine& views,
                                               const ScreenGeometrySource& screens,
                                               ApplicationShell& shell)
    : views_(views), screens_(screens), shell_(shell) {}

UpdateWindowController::~UpdateWindowController() = default;

void UpdateWindowController::setActions(std::function<void()> install,
                                        std::function<void()> later) {
    install_ = std::move(install);
    later_ = std::move(later);
}

void UpdateWindowController::show(const UpdateWindowState& state) {
    const bool isNew = window_ == nullptr;
    if (isNew && !makeWindow()) {
        return;
    }
    apply(state);
    if (isNew) {
        window_->centerOn(screens_.current());
    }
    window_->present();
    shell_.activateIgnoringOtherApplications();
}

void UpdateWindowController::update(const UpdateWindowState& state) {
    if (window_) {
        apply(state);
    }
}

void UpdateWindowController::close() {
    ViewWindow::dispose(std::move(window_));
}

bool UpdateWindowController::makeWindow() {
    auto view = views_.create(QStringLiteral("UpdateWindow"), {});
    if (!view) {
        return false;
    }
    ActionRelay::connectSignal(*view, SIGNAL(install()), [this] { call(install_); });
    ActionRelay::connectSignal(*view, SIGNAL(later()), [this] {
        call(later_);
        close();
    });
    window_ = std::make_unique<ViewWindow>(views_.theme(), std::move(view));
    window_->setTitle(QStringLiteral("Velmora Update"));
    window_->makeTitled({});
    window_->setClosedHandler([this] {
        close();
        call(later_);
    });
    return true;
}

void UpdateWindowController::apply(const UpdateWindowState& state) {
    QQuickItem& view = window_->view();
    view.setProperty("phase", phaseName(state.phase));
    view.setProperty("message", bounded(state.message, longestLine));
    view.setProperty("version", bounded(state.version, longestLine));
    view.setProperty("currentVersion", bounded(state.currentVersion, longestLine));
    view.setProperty("releaseNotes", bounded(state.releaseNotes, longestNotes));
    view.setProperty("progress", std::isfinite(state.progress) ? state.progress : 0.0);
    fitWindow();
}

/// A message needs less room than an offer.
void UpdateWindowController::fitWindow() {
    ViewEngine::layoutSubtree(window_->view());
    const QSize size(window_->width(),
                     static_cast<int>(std::ceil(window_->view().implicitHeight())));
    if (size != window_->size()) {
        window_->setMinimumSize(size);
        window_->setMaximumSize(size);
        window_->resize(size);
    }
}

}  // namespace velmora
