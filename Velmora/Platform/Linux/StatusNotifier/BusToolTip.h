// SPDX-License-Identifier: MIT
#pragma once

#include <QDBusArgument>
#include <QMetaType>
#include <QString>

#include "Velmora/Platform/Linux/StatusNotifier/BusPicture.h"

namespace velmora {

/// A tool tip as it goes over the bus, (sa(iiay)ss).
struct BusToolTip {
    QString iconName;
    BusPictures icon;
    QString title;
    QString text;
};

QDBusArgument& operator<<(QDBusArgument& argument, const BusToolTip& toolTip);
const QDBusArgument& operator>>(const QDBusArgument& argument, BusToolTip& toolTip);

}  // namespace velmora

Q_DECLARE_METATYPE(velmora::BusToolTip)
