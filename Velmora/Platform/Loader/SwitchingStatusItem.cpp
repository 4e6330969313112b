// SPDX-License-Identifier: MIT
#include "Velmora/Platform/Loader/SwitchingStatusItem.h"

#include <utility>

namespace velmora {

class SwitchingStatusItem::OneMenu final : public StatusItemDelegate {
  public:
    explicit OneMenu(StatusItemDelegate& owner) : owner_(owner) {}

    std::vector<MenuItem> menuNeedsUpdate() override { return owner_.menuNeedsUpdate(); }
    void menuWillOpen() override {
        if (open_++ == 0) {
            owner_.menuWillOpen();
        }
    }
    void menuDidClose() override {
        if (--open_ == 0) {
            owner_.menuDidClose();
        }
    }

  private:
    StatusItemDelegate& owner_;
    int open_ = 0;
};

SwitchingStatusItem::SwitchingStatusItem(std::unique_ptr<StatusItem> first,
                                         std::unique_ptr<StatusItem> fallback)
    : first_(std::move(first)), fallback_(std::move(fallback)) {}

SwitchingStatusItem::~SwitchingStatusItem() {
    SwitchingStatusItem::hide();
}

void SwitchingStatusItem::setFirstIsTaken(bool taken) {
    if (std::exchange(isTaken_, taken) == taken || !menu_) {
        return;
    }
    if (taken) {
        fallback_->hide();
    } else {
        fallback_->show(look_, *menu_);
    }
}

void SwitchingStatusItem::show(const StatusItemLook& look, StatusItemDelegate& delegate) {
    hide();
    look_ = look;
    menu_ = std::make_unique<OneMenu>(delegate);
    first_->show(look_, *menu_);
    if (!isTaken_) {
        fallback_->show(look_, *menu_);
    }
}

void SwitchingStatusItem::hide() {
    if (menu_) {
        first_->hide();
        fallback_->hide();
        menu_.reset();
    }
}

void SwitchingStatusItem::mousePressedSomewhere() {
    first_->mousePressedSomewhere();
    fallback_->mousePressedSomewhere();
}

void SwitchingStatusItem::menuChanged() {
    first_->menuChanged();
    fallback_->menuChanged();
}

}  // namespace velmora
