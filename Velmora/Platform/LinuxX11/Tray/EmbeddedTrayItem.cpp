// SPDX-License-Identifier: MIT
#include "Velmora/Platform/LinuxX11/Tray/EmbeddedTrayItem.h"

#include <utility>

#include "Velmora/Platform/LinuxX11/Tray/TrayIconWindow.h"
#include "Velmora/Platform/LinuxX11/Tray/TrayMenu.h"
#include "Velmora/Platform/LinuxX11/Tray/TrayToolTip.h"

namespace velmora {

/// What is there while the item is shown.
class EmbeddedTrayItem::Parts {
  public:
    Parts(const StatusItemLook& look, StatusItemDelegate& delegate,
          const DesktopAppearance& appearance, const std::string& display)
        : delegate_(delegate),
          appearance_(appearance),
          toolTip_(look.toolTip, appearance),
          icon_(look.icon, look.accessibilityLabel,
                {.pressed = [this](const QRect& icon) { open(icon); },
                 .hovered = [this](const QRect& icon) { hovered(icon); },
                 .lost = [this] { menu_.close(); }},
                display) {}
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
    void hovered(const QRect& icon) {
        if (icon.isNull() || menu_.isOpen()) {
            toolTip_.hide();
        } else {
            toolTip_.showSoon(icon);
        }
    }

    void open(const QRect& icon) {
        toolTip_.hide();
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
    TrayToolTip toolTip_;
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
