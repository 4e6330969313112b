// SPDX-License-Identifier: MIT
#include "Velmora/Platform/Linux/PlainApplicationShell.h"

#include <QCoreApplication>
#include <QMetaObject>

namespace velmora {

void PlainApplicationShell::terminate() {
    QMetaObject::invokeMethod(QCoreApplication::instance(), &QCoreApplication::quit,
                              Qt::QueuedConnection);
}

}  // namespace velmora
