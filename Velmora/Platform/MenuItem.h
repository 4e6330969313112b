// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <string>
#include <vector>

namespace velmora {

/// One entry of the tray menu. A value; two are equal where the user would see the same.
struct MenuItem {
    enum class Kind { entry, separator };

    Kind kind = Kind::entry;
    std::string title;
    bool enabled = true;
    bool checkable = false;  ///< Carries a mark that can be on or off.
    bool checked = false;
    std::vector<MenuItem> children;  ///< A submenu where there are any.
    std::function<void()> action;    ///< May be empty.

    static MenuItem separator() {
        MenuItem item;
        item.kind = Kind::separator;
        return item;
    }

    /// A line that only tells something.
    static MenuItem note(std::string title) {
        MenuItem item;
        item.title = std::move(title);
        item.enabled = false;
        return item;
    }

    static MenuItem command(std::string title, std::function<void()> action) {
        MenuItem item;
        item.title = std::move(title);
        item.action = std::move(action);
        return item;
    }

    /// Actions cannot be compared and are left out.
    bool operator==(const MenuItem& other) const {
        return kind == other.kind && title == other.title && enabled == other.enabled &&
               checkable == other.checkable && checked == other.checked &&
               children == other.children;
    }
};

}  // namespace velmora
