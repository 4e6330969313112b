// SPDX-License-Identifier: MIT
#include "Velmora/Platform/Linux/StatusNotifier/BusMenuRemoved.h"

namespace velmora {

QDBusArgument& operator<<(QDBusArgument& argument, const BusMenuRemoved& item) {
    argument.beginStructure();
    argument << item.id << item.names;
    argument.endStructure();
    return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, BusMenuRemoved& item) {
    argument.beginStructure();
    argument >> item.id >> item.names;
    argument.endStructure();
    return argument;
}

}  // namespace velmora
