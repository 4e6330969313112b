// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QDBusArgument>
#include <QList>
#include <QMetaType>

#include "Velmora/Platform/StatusIconPixmap.h"

namespace velmora {

/// One size of an icon as it goes over the bus, (iiay): width, height, and four bytes A, R, G, B
/// for every pixel.
struct BusPicture {
    int width = 0;
    int height = 0;
    QByteArray bytes;

    static BusPicture from(const StatusIconPixmap& pixmap);
};

using BusPictures = QList<BusPicture>;

QDBusArgument& operator<<(QDBusArgument& argument, const BusPicture& picture);
const QDBusArgument& operator>>(const QDBusArgument& argument, BusPicture& picture);

}  // namespace velmora

Q_DECLARE_METATYPE(velmora::BusPicture)
