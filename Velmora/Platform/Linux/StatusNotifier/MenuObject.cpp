// SPDX-License-Identifier: MIT
#include "Velmora/Platform/Linux/StatusNotifier/MenuObject.h"

#include <QDBusError>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <set>
#include <utility>

namespace velmora {

namespace {

/// What one call may name; a menu never has as much.
constexpr qsizetype groupLimit = 256;
constexpr qsizetype eventLimit = 32;

QString label(const std::string& title) {
    // One underscore would mark a key of the keyboard.
    return QString::fromStdString(title).replace(QLatin1Char('_'), QStringLiteral("__"));
}

QVariantMap allProperties(const MenuLayout::Node& node) {
    QVariantMap properties;
    if (!node.children.empty()) {
        properties[QStringLiteral("children-display")] = QStringLiteral("submenu");
    }
    if (node.id == MenuLayout::rootId) {
        return properties;
    }
    const MenuItem& item = node.item;
    if (item.kind == MenuItem::Kind::separator) {
        return {{QStringLiteral("type"), QStringLiteral("separator")}};
    }
    properties[QStringLiteral("label")] = label(item.title);
    if (!item.enabled) {
        properties[QStringLiteral("enabled")] = false;
    }
    if (item.checkable) {
        properties[QStringLiteral("toggle-type")] = QStringLiteral("checkmark");
        properties[QStringLiteral("toggle-state")] = item.checked ? 1 : 0;
    }
    return properties;
}

/// Those that were asked for; all of them where nothing was named.
QVariantMap properties(const MenuLayout::Node& node, const QStringList& names) {
    QVariantMap all = allProperties(node);
    if (!names.isEmpty()) {
        all.removeIf([&](auto entry) { return !names.contains(entry.key()); });
    }
    return all;
}

/// `depth` levels below the entry; all of them where it is negative.
BusMenuNode busNode(const MenuLayout::Node& node, int depth, const QStringList& names) {
    BusMenuNode result{.id = node.id, .properties = properties(node, names), .children = {}};
    if (depth != 0) {
        for (const MenuLayout::Node& child : node.children) {
            result.children.append(busNode(child, depth - 1, names));
        }
    }
    return result;
}

void collectProperties(const MenuLayout::Node* node, std::map<int, QVariantMap>& all) {
    if (node != nullptr) {
        all[node->id] = allProperties(*node);
        for (const MenuLayout::Node& child : node->children) {
            collectProperties(&child, all);
        }
    }
}

void registerTypes() {
    qDBusRegisterMetaType<BusMenuNode>();
    qDBusRegisterMetaType<BusMenuProperties>();
    qDBusRegisterMetaType<BusMenuPropertiesList>();
    qDBusRegisterMetaType<BusMenuRemoved>();
    qDBusRegisterMetaType<BusMenuRemovedList>();
    qDBusRegisterMetaType<BusMenuEvent>();
    qDBusRegisterMetaType<BusMenuEvents>();
    qDBusRegisterMetaType<QList<int>>();
}

const QString busInterface = QStringLiteral("org.freedesktop.DBus");

}  // namespace

MenuObject::MenuObject(QDBusConnection bus, Clock& clock, StatusItemDelegate& delegate)
    : bus_(std::move(bus)),
      delegate_(delegate),
      session_(clock, [this](bool open) { sessionChanged(open); }) {
    registerTypes();
}

MenuObject::~MenuObject() {
    session_.end();
}

MenuLayout::Change MenuObject::refresh() {
    return layout_.update(delegate_.menuNeedsUpdate());
}

void MenuObject::menuChanged() {
    if (!session_.isOpen()) {
        return;
    }
    std::map<int, QVariantMap> before;
    collectProperties(layout_.find(MenuLayout::rootId), before);
    const MenuLayout::Change change = refresh();
    if (change == MenuLayout::Change::layout) {
        emit LayoutUpdated(layout_.revision(), MenuLayout::rootId);
    } else if (change == MenuLayout::Change::looks) {
        announce(before);
    }
}

void MenuObject::announce(const std::map<int, QVariantMap>& before) {
    std::map<int, QVariantMap> now;
    collectProperties(layout_.find(MenuLayout::rootId), now);
    BusMenuPropertiesList updated;
    BusMenuRemovedList removed;
    for (const auto& entryBefore : before) {
        const int id = entryBefore.first;
        const QVariantMap& old = entryBefore.second;
        const QVariantMap& present = now[id];
        QVariantMap changed = present;
        changed.removeIf([&old](auto entry) { return old.value(entry.key()) == *entry; });
        if (!changed.isEmpty()) {
            updated.append({.id = id, .properties = changed});
        }
        QStringList gone = old.keys();
        gone.removeIf([&present](const QString& name) { return present.contains(name); });
        if (!gone.isEmpty()) {
            removed.append({.id = id, .names = gone});
        }
    }
    emit ItemsPropertiesUpdated(updated, removed);
}

uint MenuObject::GetLayout(int parentId, int recursionDepth, const QStringList& propertyNames,
                           velmora::BusMenuNode& layout) {
    if (parentId == MenuLayout::rootId) {
        refresh();  // Not every host asks with AboutToShow first.
    }
    if (const MenuLayout::Node* const node = layout_.find(parentId)) {
        layout = busNode(*node, recursionDepth, propertyNames);
    } else {
        sendErrorReply(QDBusError::InvalidArgs, QStringLiteral("no such entry"));
    }
    return layout_.revision();
}

velmora::BusMenuPropertiesList MenuObject::GetGroupProperties(const QList<int>& ids,
                                                              const QStringList& propertyNames) {
    BusMenuPropertiesList result;
    std::set<int> seen;
    for (const int id : ids.mid(0, groupLimit)) {
        const MenuLayout::Node* const node = layout_.find(id);
        if (node != nullptr && seen.insert(id).second) {
            result.append({.id = id, .properties = properties(*node, propertyNames)});
        }
    }
    return result;
}

QDBusVariant MenuObject::GetProperty(int id, const QString& name) {
    const MenuLayout::Node* const node = layout_.find(id);
    const QVariant value = node != nullptr ? allProperties(*node).value(name) : QVariant();
    if (!value.isValid()) {
        sendErrorReply(QDBusError::InvalidArgs, QStringLiteral("no such entry or property"));
        return QDBusVariant(QString());
    }
    return QDBusVariant(value);
}

void MenuObject::Event(int id, const QString& eventId, const QDBusVariant& /*data*/,
                       uint /*timestamp*/) {
    if (!handle(id, eventId)) {
        sendErrorReply(QDBusError::InvalidArgs, QStringLiteral("no such entry"));
    }
}

QList<int> MenuObject::EventGroup(const QList<velmora::BusMenuEvent>& events) {
    QList<int> unknown;
    for (const BusMenuEvent& event : events.mid(0, eventLimit)) {
        if (!handle(event.id, event.name)) {
            unknown.append(event.id);
        }
    }
    return unknown;
}

bool MenuObject::handle(int id, const QString& eventId) {
    if (id == MenuLayout::rootId) {
        if (eventId == QLatin1String("opened")) {
            if (refresh() != MenuLayout::Change::nothing) {
                emit LayoutUpdated(layout_.revision(), MenuLayout::rootId);
            }
            session_.opened(host());
        } else if (eventId == QLatin1String("closed")) {
            session_.closed(host());
        }
        return true;
    }
    if (eventId == QLatin1String("clicked") && layout_.action(id)) {
        trigger(id);
        return true;
    }
    return layout_.find(id) != nullptr;
}

void MenuObject::trigger(int id) {
    session_.triggered(host());
    // The host gets its reply first: what follows may open a window.
    QMetaObject::invokeMethod(
        this, [action = *layout_.action(id)] { action(); }, Qt::QueuedConnection);
}

bool MenuObject::AboutToShow(int id) {
    if (id != MenuLayout::rootId) {
        return false;
    }
    const bool changed = refresh() != MenuLayout::Change::nothing;
    session_.aboutToShow(host());
    if (changed) {
        emit LayoutUpdated(layout_.revision(), MenuLayout::rootId);
    }
    return changed;
}

QList<int> MenuObject::AboutToShowGroup(const QList<int>& ids, QList<int>& idErrors) {
    QList<int> updated;
    idErrors.clear();
    for (const int id : std::set<int>(ids.begin(), ids.end())) {
        if (id == MenuLayout::rootId) {
            if (AboutToShow(id)) {
                updated.append(id);
            }
        } else if (layout_.find(id) == nullptr && idErrors.size() < groupLimit) {
            idErrors.append(id);
        }
    }
    return updated;
}

std::string MenuObject::host() const {
    return calledFromDBus() ? message().service().toStdString() : std::string();
}

void MenuObject::sessionChanged(bool open) {
    if (!watchedHost_.isEmpty()) {
        watchHost(std::exchange(watchedHost_, QString()), false);
    }
    if (open) {
        watchedHost_ = QString::fromStdString(*session_.owner());
        watchHost(watchedHost_, true);
        delegate_.menuWillOpen();
    } else {
        delegate_.menuDidClose();
    }
}

void MenuObject::watchHost(const QString& host, bool watch) {
    const QString path = QStringLiteral("/org/freedesktop/DBus");
    const QString signal = QStringLiteral("NameOwnerChanged");
    const auto slot = SLOT(ownerOfNameChanged(QString, QString, QString, QDBusMessage));
    // Without naming the sender, which would mean to wait for the bus; the slot looks at it.
    if (watch) {
        bus_.connect(QString(), path, busInterface, signal, {host}, QString(), this, slot);
    } else {
        bus_.disconnect(QString(), path, busInterface, signal, {host}, QString(), this, slot);
    }
}

void MenuObject::ownerOfNameChanged(const QString& name, const QString& /*before*/,
                                    const QString& after, const QDBusMessage& message) {
    if (message.service() == busInterface && after.isEmpty()) {
        session_.hostLeft(name.toStdString());
    }
}

}  // namespace velmora
