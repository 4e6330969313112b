// SPDX-License-Identifier: MIT
#include "Velmora/Platform/Linux/StatusNotifier/BusToolTip.h"

namespace velmora {

QDBusArgument& operator<<(QDBusArgument& argument, const BusToolTip& toolTip) {
    argument.beginStructure();
    argument << toolTip.iconName << toolTip.icon << toolTip.title << toolTip.text;
    argument.endStructure();
    return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, BusToolTip& toolTip) {
    argument.beginStructure();
    argument >> toolTip.iconName >> toolTip.icon >> toolTip.title >> toolTip.text;
    argument.endStructure();
    return argument;
}

}  // namespace velmora
