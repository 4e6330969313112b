// SPDX-License-Identifier: MIT
#include "Velmora/Presentation/SettingsWindowController.h"

#include <QQmlEngine>
#include <QStringList>
#include <optional>
#include <utility>

namespace velmora {

namespace {

/// So much of a remembered window has to lie on a screen for it to be found again, in points.
constexpr double leastVisible = 80;

std::optional<QPoint> parsedCorner(const std::string& text) {
    const QStringList words = QString::fromStdString(text).split(u' ', Qt::SkipEmptyParts);
    bool xIsNumber = false;
    bool yIsNumber = false;
    if (words.size() != 4) {
        return std::nullopt;
    }
    const QPoint corner(words[0].toInt(&xIsNumber), words[1].toInt(&yIsNumber));
    return xIsNumber && yIsNumber ? std::optional(corner) : std::nullopt;
}

/// Whether a window's upper edge, by which it is moved, can be reached on one of the screens.
bool isReachable(const QRect& frame, const ScreenGeometry& geometry) {
    for (const Screen& screen : geometry.screens()) {
        const Rect room = geometry.logicalFromScreen(screen.visibleFrame);
        const double left = std::max<double>(frame.left(), room.minX());
        const double right = std::min<double>(frame.right(), room.maxX());
        if (right - left >= leastVisible && frame.top() >= room.minY() &&
            frame.top() + leastVisible <= room.maxY()) {
            return true;
        }
    }
    return false;
}

}  // namespace

SettingsWindowController::SettingsWindowController(ViewEngine& views,
                                                   const ScreenGeometrySource& screens,
                                                   ApplicationShell& shell, Settings& settings)
    : views_(views), screens_(screens), shell_(shell), settings_(settings) {}

SettingsWindowController::~SettingsWindowController() {
    QObject::disconnect(modelGone_);
    rememberFrame();
}

void SettingsWindowController::attach(AppModel& model) {
    QObject::disconnect(modelGone_);
    model_ = &model;
    QQmlEngine::setObjectOwnership(model_, QQmlEngine::CppOwnership);
    modelGone_ = QObject::connect(model_, &QObject::destroyed, [this] {
        rememberFrame();
        window_.reset();
        model_ = nullptr;
    });
}

void SettingsWindowController::showSettings() {
    if (model_ == nullptr) {
        return;
    }
    closeWindow();
    auto view = views_.create(QStringLiteral("SettingsView"),
                              {{QStringLiteral("model"), QVariant::fromValue<QObject*>(model_)}});
    if (!view) {
        return;
    }
    window_ = std::make_unique<ViewWindow>(views_.theme(), std::move(view));
    window_->setTitle(QStringLiteral("Velmora Settings"));
    const ScreenGeometry geometry = screens_.current();
    const auto screens = geometry.screens();
    window_->makeTitled(screens.empty() ? Rect{} : screens.front().visibleFrame);
    window_->centerOn(geometry);
    restoreFrame();
    window_->setClosedHandler([this] { closeWindow(); });
    window_->present();
    shell_.activateIgnoringOtherApplications();
}

void SettingsWindowController::restoreFrame() {
    const auto corner = parsedCorner(settings_.text(frameKey).value_or(std::string()));
    if (corner && isReachable(QRect(*corner, window_->size()), screens_.current())) {
        window_->setPosition(*corner);
    }
}

void SettingsWindowController::rememberFrame() {
    if (!window_) {
        return;
    }
    const QRect frame = window_->lastFrame();
    settings_.setText(frameKey, QStringLiteral("%1 %2 %3 %4")
                                    .arg(frame.x())
                                    .arg(frame.y())
                                    .arg(frame.width())
                                    .arg(frame.height())
                                    .toStdString());
}

void SettingsWindowController::closeWindow() {
    rememberFrame();
    ViewWindow::dispose(std::move(window_));
}

}  // namespace velmora
