// SPDX-License-Identifier: MIT
#include "Velmora/Platform/LinuxX11/Tray/TrayLook.h"

#include <QColor>
#include <QGuiApplication>
#include <QStyle>
#include <QStyleFactory>

namespace velmora {

QPalette trayPalette(std::optional<DesktopAppearance::ColorScheme> scheme) {
    const bool dark = scheme == DesktopAppearance::ColorScheme::dark;
    const QColor base = dark ? QColor(0x2A, 0x2A, 0x2C) : QColor(0xFA, 0xFA, 0xFA);
    const QColor text = dark ? QColor(0xF2, 0xF2, 0xF4) : QColor(0x1C, 0x1C, 0x1E);
    const QColor quiet = dark ? QColor(0x9A, 0x9A, 0xA0) : QColor(0x6E, 0x6E, 0x73);
    const QPalette desktop = QGuiApplication::palette();
    QPalette palette(base);
    for (const auto role : {QPalette::Window, QPalette::Base, QPalette::Button}) {
        palette.setColor(role, base);
    }
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
        palette.setColor(role, text);
        palette.setColor(QPalette::Disabled, role, quiet);
    }
    palette.setColor(QPalette::Highlight, desktop.color(QPalette::Highlight));
    palette.setColor(QPalette::HighlightedText, desktop.color(QPalette::HighlightedText));
    return palette;
}

QStyle* trayStyle() {
    static QStyle* const style = QStyleFactory::create(QStringLiteral("Fusion"));
    return style;
}

}  // namespace velmora
