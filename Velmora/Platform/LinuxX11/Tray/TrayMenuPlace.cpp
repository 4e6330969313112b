// SPDX-License-Identifier: MIT
#include "Velmora/Platform/LinuxX11/Tray/TrayMenuPlace.h"

#include <QGuiApplication>
#include <QScreen>
#include <algorithm>

namespace velmora::traymenu {

QRect logical(const QRect& native) {
    for (const QScreen* const screen : QGuiApplication::screens()) {
        const QPoint origin = screen->geometry().topLeft();
        const double ratio = screen->devicePixelRatio();
        const QRectF whole(origin, QSizeF(screen->size()) * ratio);
        if (whole.contains(native.center())) {
            const QPointF corner = QPointF(native.topLeft() - origin) / ratio + origin;
            return {corner.toPoint(), (QSizeF(native.size()) / ratio).toSize()};
        }
    }
    return native;
}

QPoint place(const QRect& icon, const QSize& menu) {
    const QScreen* screen = QGuiApplication::screenAt(icon.center());
    if (screen == nullptr) {
        screen = QGuiApplication::primaryScreen();
    }
    if (screen == nullptr) {
        return icon.bottomLeft();
    }
    const QRect area = screen->geometry();
    const bool isAtTop = icon.center().y() < area.center().y();
    const int y = isAtTop ? icon.bottom() + 1 : icon.top() - menu.height();
    const auto within = [](int value, int least, int most) {
        return std::max(least, std::min(value, most));
    };
    return {within(icon.left(), area.left(), area.right() + 1 - menu.width()),
            within(y, area.top(), area.bottom() + 1 - menu.height())};
}

}  // namespace velmora::traymenu
