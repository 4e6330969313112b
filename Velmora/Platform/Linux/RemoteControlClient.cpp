// SPDX-License-Identifier: MIT
#include "Velmora/Platform/Linux/RemoteControlClient.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusReply>
#include <QDBusServiceWatcher>
#include <QEventLoop>
#include <QString>
#include <QTimer>

#include "Velmora/Platform/Linux/RemoteControlNames.h"

namespace velmora {

namespace {

constexpr int replyTimeout = 5000;  // Milliseconds.

QDBusMessage call(const char* method) {
    QDBusConnection bus = QDBusConnection::sessionBus();
    QDBusMessage message = QDBusMessage::createMethodCall(
        QString::fromLatin1(remotecontrol::serviceName),
        QString::fromLatin1(remotecontrol::objectPath),
        QString::fromLatin1(remotecontrol::interfaceName), QString::fromLatin1(method));
    // Asking must never start the program.
    message.setAutoStartService(false);
    return bus.call(message, QDBus::Block, replyTimeout);
}

bool isRunning() {
    QDBusConnection bus = QDBusConnection::sessionBus();
    return bus.isConnected() && bus.interface() != nullptr &&
           bus.interface()
               ->isServiceRegistered(QString::fromLatin1(remotecontrol::serviceName))
               .value();
}

bool succeeds(const char* method) {
    return call(method).type() == QDBusMessage::ReplyMessage;
}

}  // namespace

bool RemoteControlClient::showSettings() {
    return succeeds("ShowSettings");
}

bool RemoteControlClient::showOnboarding() {
    return succeeds("ShowOnboarding");
}

std::optional<bool> RemoteControlClient::toggleHoverLookup() {
    const QDBusReply<bool> reply = call("ToggleHoverLookup");
    return reply.isValid() ? std::optional(reply.value()) : std::nullopt;
}

std::optional<std::string> RemoteControlClient::diagnostics() {
    const QDBusReply<QString> reply = call("Diagnostics");
    return reply.isValid() ? std::optional(reply.value().toStdString()) : std::nullopt;
}

bool RemoteControlClient::copyDiagnostics() {
    return succeeds("CopyDiagnostics");
}

bool RemoteControlClient::quit() {
    if (!isRunning()) {
        return false;
    }
    QEventLoop loop;
    QDBusServiceWatcher watcher(QString::fromLatin1(remotecontrol::serviceName),
                                QDBusConnection::sessionBus(),
                                QDBusServiceWatcher::WatchForUnregistration);
    QObject::connect(&watcher, &QDBusServiceWatcher::serviceUnregistered, &loop, &QEventLoop::quit);
    QTimer::singleShot(replyTimeout, &loop, &QEventLoop::quit);
    // The answer may be lost as the program goes; that it goes is what counts.
    call("Quit");
    if (isRunning()) {
        loop.exec();
    }
    return !isRunning();
}

}  // namespace velmora
