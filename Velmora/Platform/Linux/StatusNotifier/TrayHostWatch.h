// SPDX-License-Identifier: MIT
#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QObject>
#include <QString>
#include <functional>
#include <optional>

namespace velmora {

/// Knows whether something on the session bus shows tray items. Believes what the watcher of tray
/// items says of its hosts; a watcher that does not answer in some seconds has none. Never waits.
/// Main thread.
class TrayHostWatch final : public QObject {
    Q_OBJECT

  public:
    /// How long a watcher may take for its answer, in milliseconds.
    static constexpr int patience = 5000;

    using Changed = std::function<void(bool isThere)>;

    /// `changed` is called once as soon as it is known, never from here, and at every change.
    explicit TrayHostWatch(Changed changed);
    ~TrayHostWatch() override;

  private slots:
    void ownerOfNameChanged(const QString& name, const QString& before, const QString& after,
                            const QDBusMessage& message);
    void ask();
    void answered(QDBusPendingCallWatcher* reply);
    void busLeft();

  private:
    void tell(bool isThere);

    QDBusConnection bus_;
    Changed changed_;
    std::optional<bool> known_;
    bool isAsking_ = false;
    bool askAgain_ = false;
};

}  // namespace velmora
