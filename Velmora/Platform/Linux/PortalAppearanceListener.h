// SPDX-License-Identifier: MIT
#pragma once

#include <QDBusConnection>
#include <QDBusPendingCallWatcher>
#include <QObject>
#include <QString>
#include <optional>

#include "Velmora/Platform/Linux/PortalAppearance.h"

namespace velmora {

/// Asks the settings portal on the session bus and hears of its changes.
class PortalAppearance::Listener final : public QObject {
    Q_OBJECT

  public:
    Listener();

    std::optional<ColorScheme> scheme() const { return scheme_; }
    void observe(Observer observer) { observer_ = std::move(observer); }

  private slots:
    void onSettingChanged(const QString& space, const QString& key);

  private:
    void read();
    void finish(QDBusPendingCallWatcher* watcher);

    QDBusConnection bus_ = QDBusConnection::sessionBus();
    std::optional<ColorScheme> scheme_;
    Observer observer_;
    bool reading_ = false;
    bool again_ = false;
};

}  // namespace velmora
