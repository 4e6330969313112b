// SPDX-License-Identifier: MIT
#include "Velmora/Platform/Linux/ClipboardPasteboard.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QString>

namespace velmora {

void ClipboardPasteboard::setText(const std::string& text) {
    if (QClipboard* const clipboard = QGuiApplication::clipboard()) {
        clipboard->setText(QString::fromStdString(text));
    }
}

}  // namespace velmora
