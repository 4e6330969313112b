// SPDX-License-Identifier: MIT
#include "Velmora/Platform/LinuxX11/Tray/EmbeddedTrayItem.h"

#include <utility>

#include "Velmora/Platform/LinuxX11/Tray/TrayIconWindow.h"
#include "Velmora/Platform/LinuxX11/Tray/TrayMenu.h"

namespace velmora {

/// What is there while the item is shown.
class EmbeddedTrayItem::Parts {
  public:
    Parts(const StatusItemLook& look, StatusItemDelegate& delegate,
          const DesktopAppearance& appearance, const std::string& display)
        : delegate_(delegate),
          appearance_(appearance),
          icon_(
              look.icon, look.accessibilityLabel, [this](const QRect& icon) { open(icon); },
              [this] { menu_.close(); }, display) {}
    Parts(const Parts&) = delete;
    Parts& operator=(const Parts&) = delete;
    ~Parts() { menu_.close(); }

    void mousePressed() {
        // The menu sees presses itself wherever it got hold of the pointer.
        if (menu_.isOpen() && !menu_.isUnderPointer()) {
            menu_.close();
        }
    }

    void menuChanged() {
        if (menu_.isOpen()) {
            menu_.update(delegate_.menuNeedsUpdate());
        }
    }

  private:
    void open(const QRect& icon) {
        if (menu_.isOpen()) {
            menu_.close();
            return;
        }
        delegate_.menuWillOpen();
        menu_.open(delegate_.menuNeedsUpdate(), icon, appearance_.colorScheme(),
                   [this] { delegate_.menuDidClose(); });
    }

    StatusItemDelegate& delegate_;
    const DesktopAppearance& appearance_;
    TrayMenu menu_;
    TrayIconWindow icon_;
};

EmbeddedTrayItem::EmbeddedTrayItem(const DesktopAppearance& appearance, std::string display)
    : appearance_(appearance), display_(std::move(display)) {}

EmbeddedTrayItem::~EmbeddedTrayItem() = default;

void EmbeddedTrayItem::show(const StatusItemLook& look, StatusItemDelegate& delegate) {
    parts_.reset();
    parts_ = std::make_unique<Parts>(look, delegate, appearance_, display_);
}

void EmbeddedTrayItem::hide() {
    parts_.reset();
}

void EmbeddedTrayItem::mousePressedSomewhere() {
    if (parts_) {
        parts_->mousePressed();
    }
}

void EmbeddedTrayItem::menuChanged() {
    if (parts_) {
        parts_->menuChanged();
    }
}

}  // namespace velmora
