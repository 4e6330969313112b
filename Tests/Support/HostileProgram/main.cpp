// SPDX-License-Identifier: MIT
#include <signal.h>

#include <QCoreApplication>
#include <QDBusMessage>

#include "Tests/Support/HostileProgram/HostileProgram.h"
#include "Tests/Support/HostileProgram/HostileWindow.h"

/// velmora_hostile_program MODE: honest until SIGUSR1, then in the way of the mode.
int main(int argc, char** argv) {
    QCoreApplication application(argc, argv);
    signal(SIGUSR1, [](int) { velmora::test::HostileProgram::turn(); });
    const QString mode = application.arguments().value(1);
    const QString title = QStringLiteral("Sample ") + mode;
    const velmora::test::HostileWindow window(title.toStdString());
    const QDBusMessage address = QDBusConnection::sessionBus().call(QDBusMessage::createMethodCall(
        QStringLiteral("org.a11y.Bus"), QStringLiteral("/org/a11y/bus"),
        QStringLiteral("org.a11y.Bus"), QStringLiteral("GetAddress")));
    const QDBusConnection bus = QDBusConnection::connectToBus(
        address.arguments().value(0).toString(), QStringLiteral("accessibility"));
    if (!bus.isConnected()) {
        return 2;
    }
    velmora::test::HostileProgram program(bus, mode, title, [&window] { return window.extents(); });
    return QCoreApplication::exec();
}
