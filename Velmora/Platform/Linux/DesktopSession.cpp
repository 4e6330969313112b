// SPDX-License-Identifier: MIT
#include "Velmora/Platform/Linux/DesktopSession.h"

#include <QDBusConnection>
#include <QGuiApplication>
#include <QObject>
#include <QSessionManager>
#include <QString>
#include <utility>

namespace velmora {

class DesktopSession::Listener final : public QObject {
    Q_OBJECT

  public:
    explicit Listener(std::function<void()> ended) : ended_(std::move(ended)) {
        const auto* const application =
            qobject_cast<QGuiApplication*>(QCoreApplication::instance());
        if (application != nullptr) {
            const auto stayEnded = [](QSessionManager& manager) {
                manager.setRestartHint(QSessionManager::RestartNever);
            };
            // The toolkit asks for the hint in whatever it is called for first.
            connect(application, &QGuiApplication::saveStateRequest, this, stayEnded,
                    Qt::DirectConnection);
            connect(application, &QGuiApplication::commitDataRequest, this, stayEnded,
                    Qt::DirectConnection);
        }
        QDBusConnection bus = QDBusConnection::sessionBus();
        if (bus.isConnected()) {
            bus.connect(QString(), QStringLiteral("/org/freedesktop/DBus/Local"),
                        QStringLiteral("org.freedesktop.DBus.Local"),
                        QStringLiteral("Disconnected"), this, SLOT(busLeft()));
        }
    }

  private slots:
    void busLeft() {
        if (const auto ended = std::exchange(ended_, nullptr)) {
            ended();
        }
    }

  private:
    std::function<void()> ended_;
};

DesktopSession::DesktopSession(std::function<void()> ended)
    : listener_(std::make_unique<Listener>(std::move(ended))) {}

DesktopSession::~DesktopSession() = default;

}  // namespace velmora

#include "DesktopSession.moc"
