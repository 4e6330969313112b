// SPDX-License-Identifier: MIT
#pragma once

#include <gtest/gtest.h>

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusPendingCall>
#include <QDBusVariant>
#include <QString>
#include <QVariantList>
#include <QVariantMap>
#include <string>
#include <vector>

#include "Tests/Contracts/StatusNotifier/TrayWatcher.h"
#include "Tests/Support/EventLoop.h"
#include "Velmora/Platform/Linux/StatusNotifier/BusMenuEvent.h"
#include "Velmora/Platform/Linux/StatusNotifier/BusMenuNode.h"
#include "Velmora/Platform/Linux/StatusNotifier/BusMenuProperties.h"

namespace velmora::testing {

/// A panel: reads the item and its menu over a connection of its own, and clicks.
class TrayHost {
  public:
    TrayHost(const QString& name, const QString& item)
        : name_(name), bus_(TrayWatcher::connection(name)), item_(item) {}
    ~TrayHost() { leave(); }
    TrayHost(const TrayHost&) = delete;
    TrayHost& operator=(const TrayHost&) = delete;

    void leave() { QDBusConnection::disconnectFromBus(name_); }

    QDBusMessage call(const char* path, const char* interface, const char* method,
                      const QVariantList& arguments) {
        QDBusMessage message = QDBusMessage::createMethodCall(item_, QString::fromLatin1(path),
                                                              QString::fromLatin1(interface),
                                                              QString::fromLatin1(method));
        message.setArguments(arguments);
        const QDBusPendingCall pending = bus_.asyncCall(message);
        EXPECT_TRUE(waitUntil([&] { return pending.isFinished(); }));
        return pending.reply();
    }
    QDBusMessage menu(const char* method, const QVariantList& arguments) {
        return call("/StatusNotifierItem/Menu", "com.canonical.dbusmenu", method, arguments);
    }
    QVariant itemProperty(const char* name) {
        return call("/StatusNotifierItem", "org.freedesktop.DBus.Properties", "Get",
                    {QStringLiteral("org.kde.StatusNotifierItem"), QString::fromLatin1(name)})
            .arguments()
            .value(0)
            .value<QDBusVariant>()
            .variant();
    }

    bool aboutToShow() { return menu("AboutToShow", {0}).arguments().value(0).toBool(); }
    void event(int id, const char* name) {
        lastEvent = menu("Event",
                         {id, QString::fromLatin1(name), QVariant::fromValue(QDBusVariant(0)), 0U});
    }

    BusMenuNode layout(int parent = 0, int depth = -1, const QStringList& names = {}) {
        const QDBusMessage reply = menu("GetLayout", {parent, depth, names});
        revision = reply.arguments().value(0).toUInt();
        return qdbus_cast<BusMenuNode>(reply.arguments().value(1));
    }

    static const BusMenuNode* find(const BusMenuNode& node, const QString& label) {
        if (node.properties.value(QStringLiteral("label")).toString() == label) {
            return &node;
        }
        for (const BusMenuNode& child : node.children) {
            if (const BusMenuNode* const found = find(child, label)) {
                return found;
            }
        }
        return nullptr;
    }

    static std::vector<std::string> labels(const BusMenuNode& node) {
        std::vector<std::string> texts;
        for (const BusMenuNode& child : node.children) {
            const bool line =
                child.properties.value(QStringLiteral("type")) == QStringLiteral("separator");
            texts.push_back(
                line ? "-"
                     : child.properties.value(QStringLiteral("label")).toString().toStdString());
        }
        return texts;
    }

    QDBusMessage lastEvent;
    uint revision = 0;

  private:
    QString name_;
    QDBusConnection bus_;
    QString item_;
};

}  // namespace velmora::testing
