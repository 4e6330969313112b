// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

namespace velmora::test {

/// Something that assistive programs are told of, with everything in it.
struct AccessibleTree {
    std::string name;
    std::string role;  ///< As the bus calls it: "push button", "slider".
    bool focusable = false;
    bool showing = false;
    std::vector<AccessibleTree> children;

    /// What a program tells the accessibility bus of itself now; an empty tree where it tells
    /// nothing. Reads over a connection of its own.
    static AccessibleTree ofProgram(const std::string& name);

    /// "role: name" of everything but texts that is showing and can have the focus, in order.
    std::vector<std::string> controls() const;

    /// The first showing part of this role and name; null where there is none.
    const AccessibleTree* find(const std::string& wantedRole, const std::string& wantedName) const;

    /// An indented list, for failure messages.
    std::string text(int depth = 0) const;
};

}  // namespace velmora::test
