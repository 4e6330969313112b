// SPDX-License-Identifier: MIT
#include "VelmoraCore/HeadwordIndex.h"

#include <algorithm>
#include <bit>
#include <utility>

namespace velmora {
namespace {

constexpr std::size_t smallestCapacity = 1024;

/// Three nodes an entry fill the table to three quarters.
std::size_t capacityFor(std::size_t entries) {
    return std::bit_ceil(std::max(entries * 4, smallestCapacity));
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

HeadwordIndex::HeadwordIndex(std::size_t expectedEntries)
    : capacity_(capacityFor(expectedEntries)),
      first_(directKeys, root),
      longestFrom_(directKeys, 0),
      pending_(pendingEntries) {
    table_ = MemoryBlock(capacity_ * sizeof(Slot));
    shift_ = static_cast<unsigned>(64 - std::countr_zero(capacity_));
    created_.reserve(capacity_ / 2);
    next_.reserve(2 * expectedEntries);
}

HeadwordIndex::Node HeadwordIndex::child(Node parent, CharacterKey key, std::uint64_t hash) const {
    const Slot* const all = slotTable();
    for (std::size_t at = place(hash);; at = (at + 1) & (capacity_ - 1)) {
        const Slot& slot = all[at];
        if (slot.longest == 0) {
            return root;
        }
        if (slot.key == key && slot.parent == parent) {
            return static_cast<Node>(at);
        }
    }
}

HeadwordIndex::Node HeadwordIndex::firstNode(CharacterKey key) const {
    return key < directKeys ? first_[key] : child(root, key, extendHash(rootHash, key));
}

HeadwordIndex::Node HeadwordIndex::addNode(Node parent, CharacterKey key, std::uint64_t hash) {
    Slot* const all = slotTable();
    std::size_t at = place(hash);
    while (all[at].longest != 0) {
        if (all[at].key == key && all[at].parent == parent) {
            return static_cast<Node>(at);
        }
        at = (at + 1) & (capacity_ - 1);
    }
    const auto node = static_cast<Node>(at);
    all[at] = {parent, key, 0, 1};
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
    std::vector<Node> moved(capacity_, root);
    std::vector<std::uint64_t> hashes(capacity_, rootHash);
    capacity_ *= 2;
    --shift_;
    for (const Node from : std::exchange(created_, {})) {
        const bool first = old[from].parent == root;
        hashes[from] = extendHash(first ? rootHash : hashes[old[from].parent], old[from].key);
        moved[from] = addNode(first ? root : moved[old[from].parent], old[from].key, hashes[from]);
        slotTable()[moved[from]].lastPosting = old[from].lastPosting;
        slotTable()[moved[from]].longest = old[from].longest;
    }
    for (Path& path : paths_) {
        for (Node& node : path.nodes) {
            node = moved[node];
        }
    }
}

/// Works out keys and hashes and asks for the memory of the nodes.
void HeadwordIndex::enter(std::string_view headword, Pending& pending) {
    pending.keys.clear();
    pending.hashes.clear();
    for (std::size_t at = 0; at < headword.size();) {
        const Utf8Scalar scalar = utf8ScalarAt(headword.data() + at);
        if (!isPlainScalar(scalar.value)) {
            pending.keys.clear();
            const CharacterText characters(headword);
            for (std::size_t index = 0; index < characters.count(); ++index) {
                pending.keys.push_back(keys_.add(characters[index]));
            }
            break;
        }
        pending.keys.push_back(scalar.value);
        at += scalar.length;
    }
    std::uint64_t hash = rootHash;
    for (const CharacterKey key : pending.keys) {
        hash = extendHash(hash, key);
        pending.hashes.push_back(hash);
        __builtin_prefetch(slotTable() + place(hash), 1);
    }
}

void HeadwordIndex::add(std::string_view traditional, std::string_view simplified) {
    if (entered_ - inserted_ == pending_.size()) {
        insertOldest();
    }
    std::array<Pending, 2>& entry = pending_[entered_ % pending_.size()];
    enter(traditional, entry[0]);
    enter(simplified, entry[1]);
    ++entered_;
}

void HeadwordIndex::insertOldest() {
    const std::array<Pending, 2>& entry = pending_[inserted_ % pending_.size()];
    // Room for both at once, so that the node of the first stays where it is.
    const std::size_t longest = entry[0].keys.size() + entry[1].keys.size();
    while ((created_.size() + longest) * 4 > capacity_ * 3) {
        grow();
    }
    const Node first = insert(entry[0], paths_[0]);
    const Node second = insert(entry[1], paths_[1]);
    const auto posting = static_cast<std::uint32_t>(2 * inserted_);
    next_.resize(next_.size() + 2, 0);
    if (first != root) {
        addPosting(first, posting);
    }
    if (second != root && second != first) {
        addPosting(second, posting + 1);
    }
    ++inserted_;
}

/// The node of a headword, made where it is new; `root` for one that is not indexed.
HeadwordIndex::Node HeadwordIndex::insert(const Pending& headword, Path& path) {
    const std::vector<CharacterKey>& keys = headword.keys;
    if (keys.empty() || keys.size() > longestHeadword) {
        return root;
    }
    maxHeadwordLength_ = std::max(maxHeadwordLength_, keys.size());
    const auto differing =
        std::mismatch(keys.begin(), keys.end(), path.keys.begin(), path.keys.end());
    path.nodes.resize(static_cast<std::size_t>(differing.first - keys.begin()));
    path.keys.assign(keys.begin(), keys.end());
    for (std::size_t depth = path.nodes.size(); depth < keys.size(); ++depth) {
        const Node parent = depth == 0 ? root : path.nodes.back();
        path.nodes.push_back(addNode(parent, keys[depth], headword.hashes[depth]));
    }
    for (const Node node : path.nodes) {
        std::uint32_t& longest = slotTable()[node].longest;
        longest = std::max(longest, static_cast<std::uint32_t>(keys.size()));
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

void HeadwordIndex::finish() {
    while (inserted_ < entered_) {
        insertOldest();
    }
    for (std::size_t key = 0; key < directKeys; ++key) {
        if (first_[key] != root) {
            longestFrom_[key] = static_cast<std::uint16_t>(slotTable()[first_[key]].longest);
        }
    }
    created_ = {};
    pending_ = {};
    paths_ = {};
}

std::optional<HeadwordIndex::Node> HeadwordIndex::find(const CharacterText& headword) const {
    Node node = root;
    std::uint64_t hash = rootHash;
    for (std::size_t index = 0; index < headword.count(); ++index) {
        const CharacterKey key = keys_.find(headword[index]);
        hash = extendHash(hash, key);
        node = index == 0 ? firstNode(key) : child(node, key, hash);
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

/// The longest headword over a position of a text of so many characters, whose keys `keyAt` tells.
template <typename KeyAt>
std::optional<HeadwordIndex::Occurrence> HeadwordIndex::search(std::size_t count,
                                                               std::size_t position,
                                                               KeyAt keyAt) const {
    Occurrence best;
    for (std::size_t start = firstStart(position); start <= position; ++start) {
        // Shorter words do not reach the position, or do not beat what is there already.
        std::size_t needed = std::max(position - start, best.end - best.start) + 1;
        if (needed > count - start) {
            break;
        }
        const CharacterKey key = keyAt(start);
        if (key < directKeys && longestFrom_[key] < needed) {
            continue;
        }
        Node node = firstNode(key);
        std::uint64_t hash = extendHash(rootHash, key);
        for (std::size_t end = start + 1; node != root; ++end) {
            const Slot& slot = slotTable()[node];
            if (end - start >= needed && slot.lastPosting != 0) {
                best = {node, start, end};
                needed = end - start + 1;
            }
            if (slot.longest < needed || end == count) {
                break;
            }
            const CharacterKey next = keyAt(end);
            hash = extendHash(hash, next);
            node = child(node, next, hash);
        }
    }
    return best.end > best.start ? std::optional(best) : std::nullopt;
}

std::optional<HeadwordIndex::Occurrence> HeadwordIndex::longestCovering(
    const CharacterText& text, std::size_t position) const {
    Window keys(keys_, text, firstStart(position));
    return search(text.count(), position, [&](std::size_t index) { return keys.at(index); });
}

std::optional<HeadwordIndex::Occurrence> HeadwordIndex::longestCovering(
    const std::vector<CharacterKey>& keys, std::size_t position) const {
    return search(keys.size(), position, [&](std::size_t index) { return keys[index]; });
}

std::vector<CharacterKey> HeadwordIndex::keysOf(const CharacterText& text) const {
    std::vector<CharacterKey> keys(text.count());
    for (std::size_t index = 0; index < keys.size(); ++index) {
        keys[index] = keys_.find(text[index]);
    }
    return keys;
}

}  // namespace velmora
