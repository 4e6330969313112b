// SPDX-License-Identifier: MIT
#include "Velmora/Platform/Linux/StatusNotifier/BusPicture.h"

#include <QtEndian>

namespace velmora {

BusPicture BusPicture::from(const StatusIconPixmap& pixmap) {
    BusPicture picture{.width = pixmap.width, .height = pixmap.height, .bytes = {}};
    for (const std::uint32_t pixel : pixmap.pixels) {
        const quint32 ordered = qToBigEndian(pixel);
        picture.bytes.append(reinterpret_cast<const char*>(&ordered), sizeof ordered);
    }
    return picture;
}

QDBusArgument& operator<<(QDBusArgument& argument, const BusPicture& picture) {
    argument.beginStructure();
    argument << picture.width << picture.height << picture.bytes;
    argument.endStructure();
    return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, BusPicture& picture) {
    argument.beginStructure();
    argument >> picture.width >> picture.height >> picture.bytes;
    argument.endStructure();
    return argument;
}

}  // namespace velmora
