// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <memory>
#include <ostream>
#include <string>
#include <vector>

#include "Velmora/Platform/StatusItem.h"

namespace velmora {

/// A desktop with a tray and its user, for an item that is held against the contract.
class StatusItemStage {
  public:
    virtual ~StatusItemStage() = default;

    virtual StatusItem& item() = 0;

    /// The tray comes, or comes back, and whatever is shown appears in it.
    virtual void startTray() = 0;
    /// It dies.
    virtual void loseTray() = 0;
    /// Whether the item is in the tray now.
    virtual bool isInTray() = 0;

    // The user; each waits for what follows.
    virtual void openMenu() = 0;
    virtual void closeMenu() = 0;
    /// Chooses the entry of this title, in a submenu too; false where it is not offered.
    virtual bool choose(const std::string& title) = 0;

    /// The titles that the open menu shows, top to bottom, "-" for a separator, those that cannot
    /// be chosen in parentheses, "✓" before those that are on; those of a submenu come behind its
    /// own, indented.
    virtual std::vector<std::string> shown() = 0;
};

/// A kind of tray item: its name for the test, and how its desktop is made.
struct StatusItemSubject {
    std::string name;
    std::function<std::unique_ptr<StatusItemStage>()> make;

    friend std::ostream& operator<<(std::ostream& out, const StatusItemSubject& subject) {
        return out << subject.name;
    }
};

}  // namespace velmora
