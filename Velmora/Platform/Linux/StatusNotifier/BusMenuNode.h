// SPDX-License-Identifier: MIT
#pragma once

#include <QDBusArgument>
#include <QList>
#include <QMetaType>
#include <QVariantMap>

namespace velmora {

/// An entry of the menu with those below it, as it goes over the bus: (ia{sv}av), where the
/// variants hold nodes again.
struct BusMenuNode {
    int id = 0;
    QVariantMap properties;
    QList<BusMenuNode> children;
};

QDBusArgument& operator<<(QDBusArgument& argument, const BusMenuNode& node);
const QDBusArgument& operator>>(const QDBusArgument& argument, BusMenuNode& node);

}  // namespace velmora

Q_DECLARE_METATYPE(velmora::BusMenuNode)
