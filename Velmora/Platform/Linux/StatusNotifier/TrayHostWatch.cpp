// SPDX-License-Identifier: MIT
#include "Velmora/Platform/Linux/StatusNotifier/TrayHostWatch.h"

#include <QDBusPendingReply>
#include <QDBusVariant>
#include <utility>

#include "Velmora/Platform/Linux/StatusNotifier/StatusNotifierNames.h"

namespace velmora {

namespace {

const QString busName = QStringLiteral("org.freedesktop.DBus");

}  // namespace

TrayHostWatch::TrayHostWatch(Changed changed)
    : bus_(QDBusConnection::sessionBus()), changed_(std::move(changed)) {
    if (!bus_.isConnected()) {
        QMetaObject::invokeMethod(this, &TrayHostWatch::busLeft, Qt::QueuedConnection);
        return;
    }
    const QString watcher = QString::fromLatin1(statusnotifier::watcherService);
    const QString path = QString::fromLatin1(statusnotifier::watcherPath);
    // Without naming the senders, which would mean to wait for the bus. Whoever sends it, the
    // watcher is asked then.
    bus_.connect(QString(), QStringLiteral("/org/freedesktop/DBus"), busName,
                 QStringLiteral("NameOwnerChanged"), {watcher}, QString(), this,
                 SLOT(ownerOfNameChanged(QString, QString, QString, QDBusMessage)));
    for (const char* const signal :
         {"StatusNotifierHostRegistered", "StatusNotifierHostUnregistered"}) {
        bus_.connect(QString(), path, watcher, QString::fromLatin1(signal), this, SLOT(ask()));
    }
    bus_.connect(QString(), QStringLiteral("/org/freedesktop/DBus/Local"),
                 QStringLiteral("org.freedesktop.DBus.Local"), QStringLiteral("Disconnected"), this,
                 SLOT(busLeft()));
    ask();
}

TrayHostWatch::~TrayHostWatch() = default;

void TrayHostWatch::ask() {
    if (std::exchange(isAsking_, true)) {
        askAgain_ = true;
        return;
    }
    QDBusMessage question = QDBusMessage::createMethodCall(
        QString::fromLatin1(statusnotifier::watcherService),
        QString::fromLatin1(statusnotifier::watcherPath),
        QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("Get"));
    question.setAutoStartService(false);
    question << QString::fromLatin1(statusnotifier::watcherService)
             << QStringLiteral("IsStatusNotifierHostRegistered");
    auto* const reply = new QDBusPendingCallWatcher(bus_.asyncCall(question, patience), this);
    connect(reply, &QDBusPendingCallWatcher::finished, this, &TrayHostWatch::answered);
}

void TrayHostWatch::answered(QDBusPendingCallWatcher* reply) {
    const QDBusPendingReply<QDBusVariant> answer = *reply;
    reply->deleteLater();
    isAsking_ = false;
    if (std::exchange(askAgain_, false)) {
        ask();
        return;
    }
    tell(answer.isValid() && answer.value().variant().toBool());
}

void TrayHostWatch::ownerOfNameChanged(const QString& name, const QString& /*before*/,
                                       const QString& after, const QDBusMessage& message) {
    if (message.service() != busName || name != QLatin1String(statusnotifier::watcherService)) {
        return;
    }
    if (after.isEmpty()) {
        tell(false);
    } else {
        ask();
    }
}

void TrayHostWatch::busLeft() {
    tell(false);
}

void TrayHostWatch::tell(bool isThere) {
    if (known_ != isThere) {
        known_ = isThere;
        changed_(isThere);
    }
}

}  // namespace velmora
