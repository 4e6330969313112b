// SPDX-License-Identifier: MIT
#include "Velmora/Platform/Linux/RemoteControlService.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QObject>
#include <QString>
#include <QVariantList>
#include <utility>

#include "Velmora/Platform/Linux/RemoteControlNames.h"

namespace velmora {

namespace {

/// Sends a request to the bus itself and does not wait for the answer.
void askBus(const char* method, const QVariantList& arguments) {
    QDBusMessage request = QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.DBus"), QStringLiteral("/org/freedesktop/DBus"),
        QStringLiteral("org.freedesktop.DBus"), QString::fromLatin1(method));
    request.setArguments(arguments);
    QDBusConnection::sessionBus().asyncCall(request);
}

}  // namespace

class RemoteControlService::Exported final : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "com.velmora.Velmora1")

  public:
    explicit Exported(RemoteControlActions actions) : actions_(std::move(actions)) {}

  public slots:
    // The names are those of the bus interface.
    // NOLINTBEGIN(readability-identifier-naming,readability-make-member-function-const)
    void ShowSettings() { actions_.showSettings(); }
    void ShowOnboarding() { actions_.showOnboarding(); }
    bool ToggleHoverLookup() { return actions_.toggleHoverLookup(); }
    QString Diagnostics() { return QString::fromStdString(actions_.diagnostics()); }
    void CopyDiagnostics() { actions_.copyDiagnostics(); }
    void Quit() { actions_.quit(); }
    // NOLINTEND(readability-identifier-naming,readability-make-member-function-const)

  private:
    RemoteControlActions actions_;
};

RemoteControlService::RemoteControlService(RemoteControlActions actions)
    : exported_(std::make_unique<Exported>(std::move(actions))) {
    QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected()) {
        return;
    }
    offered_ = bus.registerObject(QString::fromLatin1(remotecontrol::objectPath), exported_.get(),
                                  QDBusConnection::ExportAllSlots);
    if (!offered_) {
        return;
    }
    // Not QDBusConnection::registerService, which waits for the bus.
    constexpr unsigned int doNotQueue = 4;
    askBus("RequestName", {QString::fromLatin1(remotecontrol::serviceName), doNotQueue});
}

RemoteControlService::~RemoteControlService() {
    if (offered_) {
        QDBusConnection::sessionBus().unregisterObject(
            QString::fromLatin1(remotecontrol::objectPath));
        askBus("ReleaseName", {QString::fromLatin1(remotecontrol::serviceName)});
    }
}

}  // namespace velmora

#include "RemoteControlService.moc"
