// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <optional>
#include <unordered_map>
#include <vector>

#include "Velmora/Platform/MenuItem.h"

namespace velmora {

/// The menu with a number for every entry. Entries of which only notes or states have changed keep
/// their numbers; other contents get new numbers, and the numbers of the contents before stay
/// known, because a host may still show them. The root is 0 always.
class MenuLayout {
  public:
    /// An entry with its number.
    struct Node {
        int id = 0;
        MenuItem item;  ///< Without its children.
        std::vector<Node> children;
    };

    /// How the entries differ from those before.
    enum class Change {
        nothing,  ///< They look the same.
        looks,    ///< Texts that only tell something, marks, what can be chosen.
        layout,   ///< Other entries.
    };

    static constexpr int rootId = 0;

    /// Takes these entries over. Unless the layout changes, numbers stay and actions are replaced.
    Change update(const std::vector<MenuItem>& items);

    /// Grows with every change.
    unsigned revision() const { return revision_; }

    /// The entry of this number among those of now, the root included; null where there is none.
    const Node* find(int id) const;

    /// What happens when this entry is chosen, be it of the present contents or of those before.
    /// Nothing for an entry that cannot be chosen or is unknown.
    std::optional<std::function<void()>> action(int id) const;

  private:
    using Actions = std::unordered_map<int, std::function<void()>>;

    Node numbered(const MenuItem& item);
    void index(const Node& node);
    void replace(Node& node, const std::vector<MenuItem>& items);

    std::vector<MenuItem> items_;
    Node root_;
    std::unordered_map<int, const Node*> nodes_;
    Actions actions_;
    Actions actionsBefore_;
    int lastId_ = 0;
    unsigned revision_ = 0;
};

}  // namespace velmora
