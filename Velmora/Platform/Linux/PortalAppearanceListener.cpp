// SPDX-License-Identifier: MIT
#include "Velmora/Platform/Linux/PortalAppearanceListener.h"

#include <QDBusMessage>
#include <QDBusVariant>
#include <QVariant>

namespace velmora {

namespace {

const QString portalService = QStringLiteral("org.freedesktop.portal.Desktop");
const QString portalPath = QStringLiteral("/org/freedesktop/portal/desktop");
const QString settingsInterface = QStringLiteral("org.freedesktop.portal.Settings");
const QString appearanceNamespace = QStringLiteral("org.freedesktop.appearance");
const QString colorSchemeKey = QStringLiteral("color-scheme");

/// The portal wraps what it answers in one variant or in two.
QVariant unwrapped(QVariant value) {
    for (int depth = 0; depth < 2 && value.canConvert<QDBusVariant>(); ++depth) {
        value = value.value<QDBusVariant>().variant();
    }
    return value;
}

std::optional<DesktopAppearance::ColorScheme> schemeFromPortal(const QVariant& value) {
    constexpr uint prefersDark = 1;
    constexpr uint prefersLight = 2;
    if (value.userType() == QMetaType::UInt) {
        if (value.toUInt() == prefersDark) {
            return DesktopAppearance::ColorScheme::dark;
        }
        if (value.toUInt() == prefersLight) {
            return DesktopAppearance::ColorScheme::light;
        }
    }
    return std::nullopt;
}

}  // namespace

PortalAppearance::Listener::Listener() {
    // Without naming the sender, which would mean to wait for the bus: whoever announces a
    // change, the portal itself is asked what it is.
    bus_.connect(QString(), portalPath, settingsInterface, QStringLiteral("SettingChanged"), this,
                 SLOT(onSettingChanged(QString, QString)));
    read();
}

void PortalAppearance::Listener::onSettingChanged(const QString& space, const QString& key) {
    if (space == appearanceNamespace && key == colorSchemeKey) {
        read();
    }
}

void PortalAppearance::Listener::read() {
    // One question at a time; a change during it is asked for after it.
    if (reading_) {
        again_ = true;
        return;
    }
    reading_ = true;
    again_ = false;
    QDBusMessage call = QDBusMessage::createMethodCall(portalService, portalPath, settingsInterface,
                                                       QStringLiteral("Read"));
    call << appearanceNamespace << colorSchemeKey;
    auto* watcher = new QDBusPendingCallWatcher(bus_.asyncCall(call), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, &Listener::finish);
}

void PortalAppearance::Listener::finish(QDBusPendingCallWatcher* watcher) {
    watcher->deleteLater();
    reading_ = false;
    if (again_) {
        read();
        return;
    }
    const QDBusMessage reply = watcher->reply();
    std::optional<ColorScheme> stated;
    if (reply.type() == QDBusMessage::ReplyMessage && !reply.arguments().isEmpty()) {
        stated = schemeFromPortal(unwrapped(reply.arguments().constFirst()));
    }
    if (stated != scheme_) {
        scheme_ = stated;
        if (observer_) {
            observer_(scheme_);
        }
    }
}

}  // namespace velmora
