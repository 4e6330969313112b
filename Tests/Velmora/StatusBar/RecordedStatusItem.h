// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "Velmora/Platform/StatusItem.h"

namespace velmora::testing {

/// A tray whose menu the test opens and clicks.
class RecordedStatusItem final : public StatusItem {
  public:
    void show(const StatusItemLook& newLook, StatusItemDelegate& newDelegate) override {
        look = newLook;
        ++shows;
        delegate = &newDelegate;
    }
    void hide() override { delegate = nullptr; }
    void mousePressedSomewhere() override {
        ++presses;
        delegate->menuDidClose();
    }
    void menuChanged() override {
        ++changes;
        menu = delegate->menuNeedsUpdate();
    }

    /// As a host does it.
    void open() {
        menu = delegate->menuNeedsUpdate();
        delegate->menuWillOpen();
    }

    const MenuItem* find(const std::string& title) const {
        for (const MenuItem& item : menu) {
            if (item.title == title) {
                return &item;
            }
        }
        return nullptr;
    }

    std::vector<std::string> titles() const {
        std::vector<std::string> texts;
        for (const MenuItem& item : menu) {
            texts.push_back(item.kind == MenuItem::Kind::separator ? "-" : item.title);
        }
        return texts;
    }

    std::optional<StatusItemLook> look;
    StatusItemDelegate* delegate = nullptr;
    std::vector<MenuItem> menu;
    int shows = 0;
    int presses = 0;
    int changes = 0;
};

}  // namespace velmora::testing
