// SPDX-License-Identifier: MIT
#pragma once

#include <QDBusContext>
#include <QDBusObjectPath>
#include <QObject>
#include <QString>

#include "Velmora/Platform/Linux/StatusNotifier/BusPicture.h"
#include "Velmora/Platform/Linux/StatusNotifier/BusToolTip.h"
#include "Velmora/Platform/StatusItemLook.h"

namespace velmora {

/// What hosts on the session bus read of the tray item: `org.kde.StatusNotifierItem`. Every click
/// opens the menu, which is the host's to show.
class ItemObject final : public QObject, protected QDBusContext {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.kde.StatusNotifierItem")
    Q_PROPERTY(QString Category READ category CONSTANT)
    Q_PROPERTY(QString Id READ identifier CONSTANT)
    Q_PROPERTY(QString Title READ title CONSTANT)
    Q_PROPERTY(QString Status READ status CONSTANT)
    Q_PROPERTY(int WindowId READ windowId CONSTANT)
    Q_PROPERTY(QString IconThemePath READ nothing CONSTANT)
    Q_PROPERTY(QString IconName READ nothing CONSTANT)
    Q_PROPERTY(velmora::BusPictures IconPixmap READ icon CONSTANT)
    Q_PROPERTY(QString IconAccessibleDesc READ title CONSTANT)
    Q_PROPERTY(QString OverlayIconName READ nothing CONSTANT)
    Q_PROPERTY(velmora::BusPictures OverlayIconPixmap READ noPictures CONSTANT)
    Q_PROPERTY(QString AttentionIconName READ nothing CONSTANT)
    Q_PROPERTY(velmora::BusPictures AttentionIconPixmap READ noPictures CONSTANT)
    Q_PROPERTY(QString AttentionMovieName READ nothing CONSTANT)
    Q_PROPERTY(velmora::BusToolTip ToolTip READ toolTip CONSTANT)
    Q_PROPERTY(bool ItemIsMenu READ itemIsMenu CONSTANT)
    Q_PROPERTY(QDBusObjectPath Menu READ menu CONSTANT)

  public:
    explicit ItemObject(const StatusItemLook& look);

    QString category() const { return QStringLiteral("ApplicationStatus"); }
    QString identifier() const { return QStringLiteral("com.velmora.Velmora"); }
    QString title() const { return title_; }
    QString status() const { return QStringLiteral("Active"); }
    int windowId() const { return 0; }
    QString nothing() const { return {}; }
    BusPictures icon() const { return icon_; }
    BusPictures noPictures() const { return {}; }
    BusToolTip toolTip() const;
    bool itemIsMenu() const { return true; }
    QDBusObjectPath menu() const;

  public slots:
    // The names are those of the bus interface. Where a host calls one of these instead of showing
    // the menu, the error tells it that nothing came of it.
    // NOLINTBEGIN(readability-identifier-naming)
    void Activate(int x, int y);
    void SecondaryActivate(int x, int y);
    void ContextMenu(int x, int y);
    void Scroll(int delta, const QString& orientation);
    void ProvideXdgActivationToken(const QString& token);
    // NOLINTEND(readability-identifier-naming)

  private:
    void refuse();

    QString title_;
    QString tip_;
    BusPictures icon_;
};

}  // namespace velmora
