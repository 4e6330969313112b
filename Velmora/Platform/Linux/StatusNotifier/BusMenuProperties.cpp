// SPDX-License-Identifier: MIT
#include "Velmora/Platform/Linux/StatusNotifier/BusMenuProperties.h"

namespace velmora {

QDBusArgument& operator<<(QDBusArgument& argument, const BusMenuProperties& item) {
    argument.beginStructure();
    argument << item.id << item.properties;
    argument.endStructure();
    return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, BusMenuProperties& item) {
    argument.beginStructure();
    argument >> item.id >> item.properties;
    argument.endStructure();
    return argument;
}

}  // namespace velmora
