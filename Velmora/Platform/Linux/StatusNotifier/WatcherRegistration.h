// SPDX-License-Identifier: MIT
#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QObject>
#include <QString>

namespace velmora {

/// Keeps the item registered with the desktop's watcher of tray items, whenever one is there: asks
/// at once and again whenever a watcher takes its place on the bus. What the watcher answers does
/// not matter.
class WatcherRegistration final : public QObject {
    Q_OBJECT

  public:
    explicit WatcherRegistration(QDBusConnection bus);
    ~WatcherRegistration() override;

  private slots:
    void ownerOfNameChanged(const QString& name, const QString& before, const QString& after,
                            const QDBusMessage& message);

  private:
    void registerItem();
    void askBus(const char* method, const QVariantList& arguments);

    QDBusConnection bus_;
    QString service_;
};

}  // namespace velmora
