// SPDX-License-Identifier: MIT
#include "Velmora/Platform/Linux/StatusNotifier/WatcherRegistration.h"

#include <QCoreApplication>
#include <QDBusPendingCall>
#include <QVariantList>
#include <utility>

#include "Velmora/Platform/Linux/StatusNotifier/StatusNotifierNames.h"

namespace velmora {

namespace {

const QString busName = QStringLiteral("org.freedesktop.DBus");
const QString busPath = QStringLiteral("/org/freedesktop/DBus");
constexpr unsigned int doNotQueue = 4;

}  // namespace

WatcherRegistration::WatcherRegistration(QDBusConnection bus)
    : bus_(std::move(bus)),
      service_(QStringLiteral("org.kde.StatusNotifierItem-%1-1")
                   .arg(QCoreApplication::applicationPid())) {
    // Without naming the sender, which would mean to wait for the bus; the slot looks at it.
    bus_.connect(QString(), busPath, busName, QStringLiteral("NameOwnerChanged"),
                 {QString::fromLatin1(statusnotifier::watcherService)}, QString(), this,
                 SLOT(ownerOfNameChanged(QString, QString, QString, QDBusMessage)));
    askBus("RequestName", {service_, doNotQueue});
    registerItem();
}

WatcherRegistration::~WatcherRegistration() {
    askBus("ReleaseName", {service_});
}

void WatcherRegistration::registerItem() {
    QDBusMessage request =
        QDBusMessage::createMethodCall(QString::fromLatin1(statusnotifier::watcherService),
                                       QString::fromLatin1(statusnotifier::watcherPath),
                                       QString::fromLatin1(statusnotifier::watcherService),
                                       QStringLiteral("RegisterStatusNotifierItem"));
    request.setAutoStartService(false);
    request << service_;
    bus_.asyncCall(request);
}

void WatcherRegistration::askBus(const char* method, const QVariantList& arguments) {
    QDBusMessage request =
        QDBusMessage::createMethodCall(busName, busPath, busName, QString::fromLatin1(method));
    request.setArguments(arguments);
    bus_.asyncCall(request);
}

void WatcherRegistration::ownerOfNameChanged(const QString& name, const QString& /*before*/,
                                             const QString& after, const QDBusMessage& message) {
    if (message.service() == busName && !after.isEmpty() &&
        name == QLatin1String(statusnotifier::watcherService)) {
        registerItem();
    }
}

}  // namespace velmora
