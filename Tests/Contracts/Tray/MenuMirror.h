// SPDX-License-Identifier: MIT
#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QObject>
#include <QString>
#include <string>
#include <vector>

#include "Tests/Contracts/StatusNotifier/TrayHost.h"
#include "Velmora/Platform/Linux/StatusNotifier/BusMenuNode.h"

namespace velmora::testing {

/// The menu as a host shows it: read once, and from then on kept by what the item signals.
class MenuMirror : public QObject {
    Q_OBJECT

  public:
    MenuMirror(TrayHost& host, const QString& connection, const QString& item);

    void read() { root_ = host_.layout(); }
    const BusMenuNode& root() const { return root_; }

    std::vector<std::string> titles() const;

  private slots:
    void layoutUpdated(uint revision, int parent);
    void propertiesUpdated(const QDBusMessage& message);

  private:
    TrayHost& host_;
    BusMenuNode root_;
};

}  // namespace velmora::testing
