// SPDX-License-Identifier: MIT
#include "Velmora/Platform/Linux/StatusNotifier/BusMenuNode.h"

#include <QDBusVariant>

namespace velmora {

QDBusArgument& operator<<(QDBusArgument& argument, const BusMenuNode& node) {
    argument.beginStructure();
    argument << node.id << node.properties;
    argument.beginArray(QMetaType::fromType<QDBusVariant>());
    for (const BusMenuNode& child : node.children) {
        argument << QDBusVariant(QVariant::fromValue(child));
    }
    argument.endArray();
    argument.endStructure();
    return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, BusMenuNode& node) {
    node.children.clear();
    argument.beginStructure();
    argument >> node.id >> node.properties;
    argument.beginArray();
    while (!argument.atEnd()) {
        QDBusVariant child;
        argument >> child;
        node.children.append(qdbus_cast<BusMenuNode>(child.variant()));
    }
    argument.endArray();
    argument.endStructure();
    return argument;
}

}  // namespace velmora
