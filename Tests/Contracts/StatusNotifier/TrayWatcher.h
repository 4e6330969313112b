// SPDX-License-Identifier: MIT
#pragma once

#include <QDBusConnection>
#include <QDBusError>
#include <QDBusMessage>
#include <QDBusVariant>
#include <QDBusVirtualObject>
#include <QString>
#include <QStringList>
#include <QVariant>

namespace velmora::testing {

/// A watcher of tray items that writes down who registers, and answers as the test wants.
class TrayWatcher final : public QDBusVirtualObject {
  public:
    enum class Answer { honest, error, nonsense, silence };

    TrayWatcher() : bus_(connection(QStringLiteral("watcher"))) {
        bus_.registerVirtualObject(QStringLiteral("/StatusNotifierWatcher"), this);
    }
    ~TrayWatcher() override {
        leave();
        bus_.unregisterObject(QStringLiteral("/StatusNotifierWatcher"));
        QDBusConnection::disconnectFromBus(QStringLiteral("watcher"));
    }

    static QDBusConnection connection(const QString& name) {
        return QDBusConnection::connectToBus(
            QString::fromLocal8Bit(qgetenv("DBUS_SESSION_BUS_ADDRESS")), name);
    }

    bool appear() { return bus_.registerService(service()); }
    void leave() { bus_.unregisterService(service()); }

    QString introspect(const QString& /*path*/) const override { return {}; }

    /// A panel of ours comes or goes.
    void setHostRegistered(bool registered_) {
        hostRegistered = registered_;
        bus_.send(QDBusMessage::createSignal(
            QStringLiteral("/StatusNotifierWatcher"), service(),
            registered_ ? QStringLiteral("StatusNotifierHostRegistered")
                        : QStringLiteral("StatusNotifierHostUnregistered")));
    }

    bool handleMessage(const QDBusMessage& message, const QDBusConnection& bus) override {
        if (message.member() == QStringLiteral("Get")) {
            ++questions;
            reply(message, bus, QVariant::fromValue(QDBusVariant(hostRegistered)));
            return true;
        }
        if (message.member() != QStringLiteral("RegisterStatusNotifierItem")) {
            return false;
        }
        registered.append(message.arguments().value(0).toString());
        reply(message, bus, {});
        return true;
    }

    QStringList registered;
    Answer answer = Answer::honest;
    bool hostRegistered = true;
    int questions = 0;  ///< Whether there is a host.

  private:
    void reply(const QDBusMessage& message, const QDBusConnection& bus, const QVariant& value) {
        switch (answer) {
            case Answer::honest:
                bus.send(value.isValid() ? message.createReply(value) : message.createReply());
                break;
            case Answer::error:
                bus.send(
                    message.createErrorReply(QDBusError::AccessDenied, QStringLiteral("no room")));
                break;
            case Answer::nonsense:
                bus.send(message.createReply({QStringLiteral("yes"), 42, 1.5}));
                break;
            case Answer::silence:
                message.setDelayedReply(true);
                break;
        }
    }

    static QString service() { return QStringLiteral("org.kde.StatusNotifierWatcher"); }

    QDBusConnection bus_;
};

}  // namespace velmora::testing
