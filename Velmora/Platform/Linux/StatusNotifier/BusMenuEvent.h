// SPDX-License-Identifier: MIT
#pragma once

#include <QDBusArgument>
#include <QDBusVariant>
#include <QList>
#include <QMetaType>
#include <QString>

namespace velmora {

/// What a host tells of one entry, as it comes over the bus: (isvu).
struct BusMenuEvent {
    int id = 0;
    QString name;
    QDBusVariant data{0};
    uint timestamp = 0;
};

using BusMenuEvents = QList<BusMenuEvent>;

QDBusArgument& operator<<(QDBusArgument& argument, const BusMenuEvent& event);
const QDBusArgument& operator>>(const QDBusArgument& argument, BusMenuEvent& event);

}  // namespace velmora

Q_DECLARE_METATYPE(velmora::BusMenuEvent)
