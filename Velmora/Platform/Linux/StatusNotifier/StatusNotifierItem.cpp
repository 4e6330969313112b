// SPDX-License-Identifier: MIT
#include "Velmora/Platform/Linux/StatusNotifier/StatusNotifierItem.h"

#include <QDBusConnection>
#include <QString>

#include "Velmora/Platform/Linux/StatusNotifier/ItemObject.h"
#include "Velmora/Platform/Linux/StatusNotifier/MenuObject.h"
#include "Velmora/Platform/Linux/StatusNotifier/StatusNotifierNames.h"
#include "Velmora/Platform/Linux/StatusNotifier/WatcherRegistration.h"

namespace velmora {

/// What is on the bus while the item is shown.
class StatusNotifierItem::Parts {
  public:
    Parts(const QDBusConnection& bus, Clock& clock, const StatusItemLook& look,
          StatusItemDelegate& delegate)
        : bus_(bus), item_(look), menu_(bus, clock, delegate) {
        constexpr auto everything = QDBusConnection::ExportAllSlots |
                                    QDBusConnection::ExportAllSignals |
                                    QDBusConnection::ExportAllProperties;
        bus_.registerObject(QString::fromLatin1(statusnotifier::itemPath), &item_, everything);
        bus_.registerObject(QString::fromLatin1(statusnotifier::menuPath), &menu_, everything);
        registration_ = std::make_unique<WatcherRegistration>(bus_);
    }
    Parts(const Parts&) = delete;
    Parts& operator=(const Parts&) = delete;
    ~Parts() {
        registration_.reset();
        bus_.unregisterObject(QString::fromLatin1(statusnotifier::menuPath));
        bus_.unregisterObject(QString::fromLatin1(statusnotifier::itemPath));
    }

    void mousePressed() { menu_.mousePressed(); }
    void menuChanged() { menu_.menuChanged(); }

  private:
    QDBusConnection bus_;
    ItemObject item_;
    MenuObject menu_;
    std::unique_ptr<WatcherRegistration> registration_;
};

StatusNotifierItem::StatusNotifierItem(Clock& clock) : clock_(clock) {}

StatusNotifierItem::~StatusNotifierItem() = default;

void StatusNotifierItem::show(const StatusItemLook& look, StatusItemDelegate& delegate) {
    parts_.reset();
    const QDBusConnection bus = QDBusConnection::sessionBus();
    if (bus.isConnected()) {
        parts_ = std::make_unique<Parts>(bus, clock_, look, delegate);
    }
}

void StatusNotifierItem::hide() {
    parts_.reset();
}

void StatusNotifierItem::mousePressedSomewhere() {
    if (parts_) {
        parts_->mousePressed();
    }
}

void StatusNotifierItem::menuChanged() {
    if (parts_) {
        parts_->menuChanged();
    }
}

}  // namespace velmora
