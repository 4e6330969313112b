// SPDX-License-Identifier: MIT
#include "Velmora/Platform/LinuxX11/Tray/TrayToolTip.h"

#include <QPalette>
#include <chrono>

#include "Velmora/Platform/LinuxX11/Tray/TrayLook.h"
#include "Velmora/Platform/LinuxX11/Tray/TrayMenuPlace.h"

namespace velmora {
namespace {

constexpr std::chrono::milliseconds restTime{700};  // What the toolkit's own tool tips wait.
constexpr int padding = 6;

}  // namespace

TrayToolTip::TrayToolTip(const std::string& text, const DesktopAppearance& appearance)
    : text_(QString::fromStdString(text)), appearance_(appearance) {
    moment_.setSingleShot(true);
    QObject::connect(&moment_, &QTimer::timeout, &moment_, [this] { show(); });
}

TrayToolTip::~TrayToolTip() = default;

void TrayToolTip::showSoon(const QRect& icon) {
    icon_ = icon;
    if (!text_.isEmpty() && !label_) {
        moment_.start(restTime);
    }
}

void TrayToolTip::hide() {
    moment_.stop();
    label_.reset();
}

void TrayToolTip::show() {
    label_ =
        std::make_unique<QLabel>(text_, nullptr,
                                 Qt::ToolTip | Qt::FramelessWindowHint |
                                     Qt::WindowTransparentForInput | Qt::WindowDoesNotAcceptFocus);
    label_->setTextFormat(Qt::PlainText);
    label_->setStyle(trayStyle());
    label_->setFrameStyle(QFrame::StyledPanel);
    label_->setMargin(padding);
    label_->setPalette(trayPalette(appearance_.colorScheme()));
    label_->setAttribute(Qt::WA_ShowWithoutActivating);
    label_->resize(label_->sizeHint());
    label_->move(traymenu::place(traymenu::logical(icon_), label_->size()));
    label_->show();
}

}  // namespace velmora
