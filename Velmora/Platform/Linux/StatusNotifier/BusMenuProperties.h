// SPDX-License-Identifier: MIT
#pragma once

#include <QDBusArgument>
#include <QList>
#include <QMetaType>
#include <QVariantMap>

namespace velmora {

/// What one entry of the menu looks like, as it goes over the bus: (ia{sv}).
struct BusMenuProperties {
    int id = 0;
    QVariantMap properties;
};

using BusMenuPropertiesList = QList<BusMenuProperties>;

QDBusArgument& operator<<(QDBusArgument& argument, const BusMenuProperties& item);
const QDBusArgument& operator>>(const QDBusArgument& argument, BusMenuProperties& item);

}  // namespace velmora

Q_DECLARE_METATYPE(velmora::BusMenuProperties)
