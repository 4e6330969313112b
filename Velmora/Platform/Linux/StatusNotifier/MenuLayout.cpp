// SPDX-License-Identifier: MIT
#include "Velmora/Platform/Linux/StatusNotifier/MenuLayout.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace velmora {

namespace {

/// Whether a host that shows the one may take it for the other: what can be chosen does the same.
bool mayStandFor(const std::vector<MenuItem>& some, const std::vector<MenuItem>& others) {
    return std::ranges::equal(some, others, [](const MenuItem& one, const MenuItem& other) {
        const bool onlyTells = !one.action && !other.action && one.children.empty();
        return one.kind == other.kind && (onlyTells || one.title == other.title) &&
               one.checkable == other.checkable && mayStandFor(one.children, other.children);
    });
}

}  // namespace

MenuLayout::Change MenuLayout::update(const std::vector<MenuItem>& items) {
    Change change = Change::layout;
    if (revision_ > 0 && mayStandFor(items, items_)) {
        change = items == items_ ? Change::nothing : Change::looks;
    }
    items_ = items;
    if (change != Change::nothing) {
        ++revision_;
    }
    if (change != Change::layout) {
        actions_.clear();
        replace(root_, items_);
        return change;
    }
    actionsBefore_ = std::exchange(actions_, {});
    root_ = Node();
    for (const MenuItem& item : items_) {
        root_.children.push_back(numbered(item));
    }
    nodes_.clear();
    index(root_);
    return change;
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

void MenuLayout::replace(Node& node, const std::vector<MenuItem>& items) {
    for (std::size_t place = 0; place < node.children.size(); ++place) {
        Node& child = node.children[place];
        const MenuItem& item = items[place];
        child.item = item;
        child.item.children.clear();
        if (item.enabled && item.action) {
            actions_[child.id] = item.action;
        }
        replace(child, item.children);
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
