// SPDX-License-Identifier: MIT
#include "VelmoraCore/HeadwordIndex.h"

#include <algorithm>
#include <bit>
#include <utility>

namespace velmora {
namespace {

constexpr std::size_t smallestCapacity = 1024;

/// Two nodes a headword, and a third of the table empty.
std::size_t capacityFor(std::size_t headwords) {
    return std::bit_ceil(std::max(headwords * 2, smallestCapacity));
}

}  // namespace

/// The keys of the characters around a position, each worked out once when it is first asked for.
class HeadwordIndex::Window {
  public:
    Window(const CharacterKeys& keys, const CharacterText& text, std::size_t first)
        : keys_(keys), text_(text), first_(first) {}

    CharacterKey at(std::size_t index) {
        const std::size_t offset = index - first_;
        if (offset >= cache_.size()) {
            return keys_.find(text_[index]);
        }
        while (filled_ <= offset) {
            cache_[filled_] = keys_.find(text_[first_ + filled_]);
            ++filled_;
        }
        return cache_[offset];
    }

  private:
    const CharacterKeys& keys_;
    const CharacterText& text_;
    std::size_t first_;
    std::size_t filled_ = 0;
    std::array<CharacterKey, 64> cache_;
};

HeadwordIndex::HeadwordIndex(std::size_t expectedHeadwords)
    : capacity_(capacityFor(expectedHeadwords)),
      first_(directKeys, root),
      longestFrom_(directKeys, 0) {
    table_ = MemoryBlock(capacity_ * sizeof(Slot));
    shift_ = static_cast<unsigned>(64 - std::countr_zero(capacity_));
    created_.reserve(capacity_ / 2);
    next_.reserve(expectedHeadwords + expectedHeadwords / 4);
}

HeadwordIndex::Node HeadwordIndex::child(Node parent, CharacterKey key) const {
    const Slot* const all = slotTable();
    for (std::size_t at = place(parent, key);; at = (at + 1) & (capacity_ - 1)) {
        const Slot& slot = all[at];
        if (slot.key == key && slot.parent == parent && slot.longest != 0) {
            return static_cast<Node>(at);
        }
        if (slot.longest == 0) {
            return root;
        }
    }
}

HeadwordIndex::Node HeadwordIndex::firstNode(CharacterKey key) const {
    return key < directKeys ? first_[key] : child(root, key);
}

HeadwordIndex::Node HeadwordIndex::addNode(Node parent, CharacterKey key) {
    std::size_t at = place(parent, key);
    while (slotTable()[at].longest != 0) {
        if (slotTable()[at].key == key && slotTable()[at].parent == parent) {
            return static_cast<Node>(at);
        }
        at = (at + 1) & (capacity_ - 1);
    }
    const auto node = static_cast<Node>(at);
    slotTable()[at] = {parent, key, 0, 1};
    created_.push_back(node);
    if (parent == root && key < directKeys) {
        first_[key] = node;
    }
    return node;
}

/// Moves every node to a table of twice the size. Children know their parent by its slot, so the
/// parents go first.
void HeadwordIndex::grow() {
    const MemoryBlock oldTable = std::exchange(table_, MemoryBlock(2 * table_.size()));
    const Slot* const old = static_cast<const Slot*>(oldTable.data());
    std::vector<Node> moved(std::exchange(capacity_, 2 * capacity_), root);
    --shift_;
    for (const Node from : std::exchange(created_, {})) {
        const Node parent = old[from].parent == root ? root : moved[old[from].parent];
        moved[from] = addNode(parent, old[from].key);
        slotTable()[moved[from]].lastPosting = old[from].lastPosting;
        slotTable()[moved[from]].longest = old[from].longest;
    }
    for (Path& path : paths_) {
        for (Node& node : path.nodes) {
            node = moved[node];
        }
    }
}

/// Puts the keys of a headword's characters into `current_`.
void HeadwordIndex::readKeys(std::string_view headword) {
    current_.clear();
    for (std::size_t at = 0; at < headword.size();) {
        const Utf8Scalar scalar = utf8ScalarAt(headword.data() + at);
        if (!isPlainScalar(scalar.value)) {
            current_.clear();
            const CharacterText characters(headword);
            for (std::size_t index = 0; index < characters.count(); ++index) {
                current_.push_back(keys_.add(characters[index]));
            }
            return;
        }
        current_.push_back(scalar.value);
        at += scalar.length;
    }
}

/// The node of a headword, made where it is new; `root` for one that is not indexed.
HeadwordIndex::Node HeadwordIndex::addHeadword(std::string_view headword, Path& path) {
    readKeys(headword);
    const std::size_t length = current_.size();
    if (length == 0 || length > longestHeadword) {
        return root;
    }
    maxHeadwordLength_ = std::max(maxHeadwordLength_, length);
    while ((created_.size() + length) * 4 > capacity_ * 3) {
        grow();
    }
    const auto differing =
        std::mismatch(current_.begin(), current_.end(), path.keys.begin(), path.keys.end());
    path.nodes.resize(static_cast<std::size_t>(differing.first - current_.begin()));
    path.keys = current_;
    for (std::size_t depth = path.nodes.size(); depth < length; ++depth) {
        path.nodes.push_back(addNode(depth == 0 ? root : path.nodes.back(), current_[depth]));
    }
    for (const Node node : path.nodes) {
        std::uint32_t& longest = slotTable()[node].longest;
        longest = std::max(longest, static_cast<std::uint32_t>(length));
    }
    return path.nodes.back();
}

void HeadwordIndex::addPosting(Node node, std::uint32_t posting) {
    std::uint32_t& last = slotTable()[node].lastPosting;
    if (last == 0) {
        next_[posting] = posting;
    } else {
        next_[posting] = std::exchange(next_[last - 1], posting);
    }
    last = posting + 1;
}

void HeadwordIndex::add(std::string_view traditional, std::string_view simplified) {
    const auto posting = static_cast<std::uint32_t>(next_.size());
    next_.resize(next_.size() + 2, 0);
    Node first = addHeadword(traditional, paths_[0]);
    const std::size_t tableSize = capacity_;
    const Node second = addHeadword(simplified, paths_[1]);
    if (capacity_ != tableSize && first != root) {
        first = paths_[0].nodes.back();
    }
    if (first != root) {
        addPosting(first, posting);
    }
    if (second != root && second != first) {
        addPosting(second, posting + 1);
    }
}

void HeadwordIndex::finish() {
    for (std::size_t key = 0; key < directKeys; ++key) {
        if (first_[key] != root) {
            longestFrom_[key] = static_cast<std::uint16_t>(slotTable()[first_[key]].longest);
        }
    }
    created_ = {};
    current_ = {};
    paths_ = {};
}

std::optional<HeadwordIndex::Node> HeadwordIndex::find(const CharacterText& headword) const {
    Node node = root;
    for (std::size_t index = 0; index < headword.count(); ++index) {
        const CharacterKey key = keys_.find(headword[index]);
        node = index == 0 ? firstNode(key) : child(node, key);
        if (node == root) {
            return std::nullopt;
        }
    }
    return node != root && slotTable()[node].lastPosting != 0 ? std::optional(node) : std::nullopt;
}

std::optional<HeadwordIndex::Node> HeadwordIndex::findCharacter(std::string_view character) const {
    const Node node = firstNode(keys_.find(character));
    return node != root && slotTable()[node].lastPosting != 0 ? std::optional(node) : std::nullopt;
}

std::optional<HeadwordIndex::Occurrence> HeadwordIndex::longestCovering(
    const CharacterText& text, std::size_t position) const {
    const std::size_t first =
        position + 1 > maxHeadwordLength_ ? position + 1 - maxHeadwordLength_ : 0;
    Window keys(keys_, text, first);
    Occurrence best;
    for (std::size_t start = first; start <= position; ++start) {
        // Shorter words do not reach the position, or do not beat what is there already.
        std::size_t needed = std::max(position - start, best.end - best.start) + 1;
        const CharacterKey key = keys.at(start);
        if (key < directKeys && longestFrom_[key] < needed) {
            continue;
        }
        Node node = firstNode(key);
        for (std::size_t end = start + 1; node != root; ++end) {
            const Slot& slot = slotTable()[node];
            if (end - start >= needed && slot.lastPosting != 0) {
                best = {node, start, end};
                needed = end - start + 1;
            }
            if (slot.longest < needed || end == text.count()) {
                break;
            }
            node = child(node, keys.at(end));
        }
    }
    return best.end > best.start ? std::optional(best) : std::nullopt;
}

}  // namespace velmora
