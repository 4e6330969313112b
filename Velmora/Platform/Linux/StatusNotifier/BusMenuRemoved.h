// SPDX-License-Identifier: MIT
#pragma once

#include <QDBusArgument>
#include <QList>
#include <QMetaType>
#include <QStringList>

namespace velmora {

/// What one entry of the menu has no longer, as it goes over the bus: (ias).
struct BusMenuRemoved {
    int id = 0;
    QStringList names;
};

using BusMenuRemovedList = QList<BusMenuRemoved>;

QDBusArgument& operator<<(QDBusArgument& argument, const BusMenuRemoved& item);
const QDBusArgument& operator>>(const QDBusArgument& argument, BusMenuRemoved& item);

}  // namespace velmora

Q_DECLARE_METATYPE(velmora::BusMenuRemoved)
