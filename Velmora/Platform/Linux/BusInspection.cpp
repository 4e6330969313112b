// SPDX-License-Identifier: MIT
#include "Velmora/Platform/Linux/BusInspection.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVariant>
#include <QString>
#include <QVariant>

namespace velmora::businspection {

namespace {

constexpr int replyTimeout = 2000;  // Milliseconds.

QVariant ask(const char* service, const char* path, const char* interface, const char* method,
             const QVariantList& arguments, bool mayStartIt) {
    QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected()) {
        return {};
    }
    QDBusMessage call =
        QDBusMessage::createMethodCall(QString::fromLatin1(service), QString::fromLatin1(path),
                                       QString::fromLatin1(interface), QString::fromLatin1(method));
    call.setAutoStartService(mayStartIt);
    call.setArguments(arguments);
    const QDBusMessage reply = bus.call(call, QDBus::Block, replyTimeout);
    return reply.type() == QDBusMessage::ReplyMessage ? reply.arguments().value(0) : QVariant();
}

bool property(const char* service, const char* path, const char* interface, const char* name,
              bool mayStartIt) {
    return ask(service, path, "org.freedesktop.DBus.Properties", "Get",
               {QString::fromLatin1(interface), QString::fromLatin1(name)}, mayStartIt)
        .value<QDBusVariant>()
        .variant()
        .toBool();
}

}  // namespace

bool hasSessionBus() {
    return QDBusConnection::sessionBus().isConnected();
}

bool hasAccessibilityBus() {
    return !ask("org.a11y.Bus", "/org/a11y/bus", "org.a11y.Bus", "GetAddress", {}, true)
                .toString()
                .isEmpty();
}

bool isAccessibilityEnabled() {
    return property("org.a11y.Bus", "/org/a11y/bus", "org.a11y.Status", "IsEnabled", true);
}

bool hasTrayHost() {
    constexpr const char* watcher = "org.kde.StatusNotifierWatcher";
    return property(watcher, "/StatusNotifierWatcher", watcher, "IsStatusNotifierHostRegistered",
                    false);
}

}  // namespace velmora::businspection
