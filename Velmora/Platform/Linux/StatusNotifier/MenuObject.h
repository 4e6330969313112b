// SPDX-License-Identifier: MIT
#pragma once

#include <QDBusConnection>
#include <QDBusContext>
#include <QDBusVariant>
#include <QObject>
#include <QString>
#include <QStringList>
#include <QVariantMap>
#include <map>

#include "Velmora/Platform/Clock.h"
#include "Velmora/Platform/Linux/StatusNotifier/BusMenuEvent.h"
#include "Velmora/Platform/Linux/StatusNotifier/BusMenuNode.h"
#include "Velmora/Platform/Linux/StatusNotifier/BusMenuProperties.h"
#include "Velmora/Platform/Linux/StatusNotifier/BusMenuRemoved.h"
#include "Velmora/Platform/Linux/StatusNotifier/MenuLayout.h"
#include "Velmora/Platform/Linux/StatusNotifier/MenuSession.h"
#include "Velmora/Platform/StatusItemDelegate.h"

namespace velmora {

/// The menu as hosts on the session bus read it and tell of it: `com.canonical.dbusmenu`.
class MenuObject final : public QObject, protected QDBusContext {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "com.canonical.dbusmenu")
    Q_PROPERTY(uint Version READ version CONSTANT)
    Q_PROPERTY(QString TextDirection READ textDirection CONSTANT)
    Q_PROPERTY(QString Status READ status CONSTANT)
    Q_PROPERTY(QStringList IconThemePath READ iconThemePath CONSTANT)

  public:
    /// The clock and the delegate outlive the object.
    MenuObject(QDBusConnection bus, Clock& clock, StatusItemDelegate& delegate);
    ~MenuObject() override;

    /// Ends the menu where it is open.
    void endSession() { session_.end(); }
    void mousePressed() { session_.mousePressed(); }

    /// Tells hosts what is different in a menu that is open. Those that open it later ask.
    void menuChanged();

    uint version() const { return 3; }
    QString textDirection() const { return QStringLiteral("ltr"); }
    QString status() const { return QStringLiteral("normal"); }
    QStringList iconThemePath() const { return {}; }

  public slots:
    // The names are those of the bus interface.
    // NOLINTBEGIN(readability-identifier-naming)
    uint GetLayout(int parentId, int recursionDepth, const QStringList& propertyNames,
                   velmora::BusMenuNode& layout);
    velmora::BusMenuPropertiesList GetGroupProperties(const QList<int>& ids,
                                                      const QStringList& propertyNames);
    QDBusVariant GetProperty(int id, const QString& name);
    void Event(int id, const QString& eventId, const QDBusVariant& data, uint timestamp);
    // The toolkit finds argument types by name, so not by another name of theirs.
    QList<int> EventGroup(const QList<velmora::BusMenuEvent>& events);
    bool AboutToShow(int id);
    QList<int> AboutToShowGroup(const QList<int>& ids, QList<int>& idErrors);

  signals:
    void LayoutUpdated(uint revision, int parent);
    // The toolkit finds argument types by name, so not by another name of theirs.
    void ItemsPropertiesUpdated(const QList<velmora::BusMenuProperties>& updated,
                                const QList<velmora::BusMenuRemoved>& removed);
    // NOLINTEND(readability-identifier-naming)

  private slots:
    void ownerOfNameChanged(const QString& name, const QString& before, const QString& after,
                            const QDBusMessage& message);

  private:
    /// Takes the delegate's entries and tells how they differ.
    MenuLayout::Change refresh();
    void announce(const std::map<int, QVariantMap>& before);
    bool handle(int id, const QString& eventId);
    void trigger(int id);
    void sessionChanged(bool open);
    void watchHost(const QString& host, bool watch);
    std::string host() const;

    QDBusConnection bus_;
    StatusItemDelegate& delegate_;
    MenuLayout layout_;
    MenuSession session_;
    QString watchedHost_;
};

}  // namespace velmora
