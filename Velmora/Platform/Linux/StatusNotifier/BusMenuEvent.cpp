// SPDX-License-Identifier: MIT
#include "Velmora/Platform/Linux/StatusNotifier/BusMenuEvent.h"

namespace velmora {

QDBusArgument& operator<<(QDBusArgument& argument, const BusMenuEvent& event) {
    argument.beginStructure();
    argument << event.id << event.name << event.data << event.timestamp;
    argument.endStructure();
    return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, BusMenuEvent& event) {
    argument.beginStructure();
    argument >> event.id >> event.name >> event.data >> event.timestamp;
    argument.endStructure();
    return argument;
}

}  // namespace velmora
