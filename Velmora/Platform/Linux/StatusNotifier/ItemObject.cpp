// SPDX-License-Identifier: MIT
#include "Velmora/Platform/Linux/StatusNotifier/ItemObject.h"

#include <QDBusError>
#include <QDBusMetaType>

#include "Velmora/Platform/Linux/StatusNotifier/StatusNotifierNames.h"

namespace velmora {

ItemObject::ItemObject(const StatusItemLook& look)
    : title_(QString::fromStdString(look.accessibilityLabel)),
      tip_(QString::fromStdString(look.toolTip)) {
    qDBusRegisterMetaType<BusPicture>();
    qDBusRegisterMetaType<BusPictures>();
    qDBusRegisterMetaType<BusToolTip>();
    for (const StatusIconPixmap& pixmap : look.icon) {
        icon_.append(BusPicture::from(pixmap));
    }
}

BusToolTip ItemObject::toolTip() const {
    return {.iconName = {}, .icon = {}, .title = tip_, .text = {}};
}

QDBusObjectPath ItemObject::menu() const {
    return QDBusObjectPath(QString::fromLatin1(statusnotifier::menuPath));
}

void ItemObject::refuse() {
    sendErrorReply(QDBusError::UnknownMethod, QStringLiteral("the item is its menu"));
}

void ItemObject::Activate(int /*x*/, int /*y*/) {
    refuse();
}

void ItemObject::SecondaryActivate(int /*x*/, int /*y*/) {
    refuse();
}

void ItemObject::ContextMenu(int /*x*/, int /*y*/) {
    refuse();
}

void ItemObject::Scroll(int /*delta*/, const QString& /*orientation*/) {}

void ItemObject::ProvideXdgActivationToken(const QString& /*token*/) {}

}  // namespace velmora
