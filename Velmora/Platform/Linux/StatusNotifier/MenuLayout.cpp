// SPDX-License-Identifier: MIT
#include "Velmora/Platform/Linux/StatusNotifier/MenuLayout.h"

#include <limits>
#include <utility>

namespace velmora {

bool MenuLayout::update(const std::vector<MenuItem>& items) {
    const bool changed = revision_ == 0 || items != items_;
    items_ = items;
    if (!changed) {
        actions_.clear();
        replaceActions(root_, items_);
        return false;
    }
    actionsBefore_ = std::exchange(actions_, {});
    root_ = Node();
    for (const MenuItem& item : items_) {
        root_.children.push_back(numbered(item));
    }
    nodes_.clear();
    index(root_);
    ++revision_;
    return true;
}

MenuLayout::Node MenuLayout::numbered(const MenuItem& item) {
    lastId_ = lastId_ < std::numeric_limits<int>::max() ? lastId_ + 1 : 1;
    Node node{.id = lastId_, .item = item, .children = {}};
    node.item.children.clear();
    if (item.enabled && item.action) {
        actions_[node.id] = item.action;
    }
    for (const MenuItem& child : item.children) {
        node.children.push_back(numbered(child));
    }
    return node;
}

void MenuLayout::index(const Node& node) {
    nodes_[node.id] = &node;
    for (const Node& child : node.children) {
        index(child);
    }
}

void MenuLayout::replaceActions(Node& node, const std::vector<MenuItem>& items) {
    for (std::size_t place = 0; place < node.children.size(); ++place) {
        Node& child = node.children[place];
        const MenuItem& item = items[place];
        if (item.enabled && item.action) {
            actions_[child.id] = item.action;
        }
        replaceActions(child, item.children);
    }
}

const MenuLayout::Node* MenuLayout::find(int id) const {
    const auto found = nodes_.find(id);
    return found != nodes_.end() ? found->second : nullptr;
}

std::optional<std::function<void()>> MenuLayout::action(int id) const {
    for (const Actions* const known : {&actions_, &actionsBefore_}) {
        if (const auto found = known->find(id); found != known->end()) {
            return found->second;
        }
    }
    return std::nullopt;
}

}  // namespace velmora
