// SPDX-License-Identifier: MIT
#include "Tests/Contracts/Tray/MenuMirror.h"

#include "Velmora/Platform/Linux/StatusNotifier/BusMenuProperties.h"
#include "Velmora/Platform/Linux/StatusNotifier/BusMenuRemoved.h"

namespace velmora::testing {
namespace {

BusMenuNode* find(BusMenuNode& node, int id) {
    if (node.id == id) {
        return &node;
    }
    for (BusMenuNode& child : node.children) {
        if (BusMenuNode* const found = find(child, id)) {
            return found;
        }
    }
    return nullptr;
}

void collect(const BusMenuNode& node, const std::string& indent, std::vector<std::string>& titles) {
    for (const BusMenuNode& child : node.children) {
        const QVariantMap& looks = child.properties;
        if (looks.value(QStringLiteral("type")) == QStringLiteral("separator")) {
            titles.push_back(indent + "-");
            continue;
        }
        std::string title = looks.value(QStringLiteral("label"))
                                .toString()
                                .replace(QStringLiteral("__"), QStringLiteral("_"))
                                .toStdString();
        if (looks.value(QStringLiteral("toggle-state"), 0).toInt() == 1) {
            title.insert(0, "✓");
        }
        if (!looks.value(QStringLiteral("enabled"), true).toBool()) {
            title = "(" + title + ")";
        }
        titles.push_back(indent + title);
        collect(child, indent + "  ", titles);
    }
}

}  // namespace

MenuMirror::MenuMirror(TrayHost& host, const QString& connection, const QString& item)
    : host_(host) {
    QDBusConnection bus(connection);
    const QString path = QStringLiteral("/StatusNotifierItem/Menu");
    const QString interface = QStringLiteral("com.canonical.dbusmenu");
    bus.connect(item, path, interface, QStringLiteral("LayoutUpdated"), this,
                SLOT(layoutUpdated(uint, int)));
    bus.connect(item, path, interface, QStringLiteral("ItemsPropertiesUpdated"), this,
                SLOT(propertiesUpdated(QDBusMessage)));
}

void MenuMirror::layoutUpdated(uint /*revision*/, int /*parent*/) {
    // Not from here, in the middle of a message.
    QMetaObject::invokeMethod(
        this, [this] { read(); }, Qt::QueuedConnection);
}

void MenuMirror::propertiesUpdated(const QDBusMessage& message) {
    for (const BusMenuProperties& item :
         qdbus_cast<BusMenuPropertiesList>(message.arguments().value(0))) {
        if (BusMenuNode* const node = find(root_, item.id)) {
            node->properties.insert(item.properties);
        }
    }
    for (const BusMenuRemoved& item :
         qdbus_cast<BusMenuRemovedList>(message.arguments().value(1))) {
        if (BusMenuNode* const node = find(root_, item.id)) {
            for (const QString& name : item.names) {
                node->properties.remove(name);
            }
        }
    }
}

std::vector<std::string> MenuMirror::titles() const {
    std::vector<std::string> titles;
    collect(root_, "", titles);
    return titles;
}

}  // namespace velmora::testing
