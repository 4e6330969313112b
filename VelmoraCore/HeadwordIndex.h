// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

#include "VelmoraCore/CharacterKeys.h"
#include "VelmoraCore/CharacterText.h"
#include "VelmoraCore/MemoryBlock.h"

namespace velmora {

/// The headwords of a dictionary as a trie of characters in one flat hash table: a slot is a node,
/// found by its parent and its character. Beside every node stands the length of the longest
/// headword through it, so that a search leaves a branch as soon as nothing there can win. Built by
/// `add`, then only read; reading is safe from any thread.
class HeadwordIndex {
  public:
    /// A headword's place in the index.
    using Node = std::uint32_t;

    /// One place in a searched text where a headword stands, in characters, half-open.
    struct Occurrence {
        Node node = 0;
        std::size_t start = 0;
        std::size_t end = 0;
    };

    /// Headwords longer than this are not indexed: it bounds what a search costs with a word list
    /// that was made to be slow. Real ones have 20 characters.
    static constexpr std::size_t longestHeadword = 4096;

    /// Makes room for about this many entries.
    explicit HeadwordIndex(std::size_t expectedEntries = 0);

    /// Adds an entry under its headwords, once where they are equal. An empty headword is passed
    /// over. Entries come in the order of their numbers, from 0 on. Valid UTF-8.
    void add(std::string_view traditional, std::string_view simplified);

    /// Ends the building: nothing is found before, nothing is added after.
    void finish();

    /// The number of characters of the longest headword; never below 1.
    std::size_t maxHeadwordLength() const { return maxHeadwordLength_; }

    /// The node of exactly this headword, or nothing.
    std::optional<Node> find(const CharacterText& headword) const;

    /// The same for a headword of one character.
    std::optional<Node> findCharacter(std::string_view character) const;

    /// The longest headword that covers a character position below the text's count; the leftmost
    /// of equally long ones.
    std::optional<Occurrence> longestCovering(const CharacterText& text,
                                              std::size_t position) const;

    /// The same for a text whose keys are known already.
    std::optional<Occurrence> longestCovering(const std::vector<CharacterKey>& keys,
                                              std::size_t position) const;

    /// The keys of the characters of a text; characters that no headword has are `unknown` alike.
    std::vector<CharacterKey> keysOf(const CharacterText& text) const;

    /// The number of the first entry under a headword.
    std::size_t firstEntry(Node node) const { return next_[slotTable()[node].lastPosting - 1] / 2; }

    /// The number of entries under a headword.
    std::size_t entryCount(Node node) const {
        std::size_t count = 0;
        forEachEntry(node, [&count](std::size_t) { ++count; });
        return count;
    }

    /// Calls `visit` with the number of every entry under a headword, in order.
    template <typename Visit>
    void forEachEntry(Node node, Visit visit) const {
        const std::uint32_t last = slotTable()[node].lastPosting - 1;
        std::uint32_t posting = last;
        do {
            posting = next_[posting];
            visit(static_cast<std::size_t>(posting / 2));
        } while (posting != last);
    }

  private:
    /// A node of the trie, or an empty place where `longest` is 0.
    struct Slot {
        Node parent = 0;
        CharacterKey key = 0;
        std::uint32_t lastPosting = 0;  ///< One above the last of a ring of postings; 0 for none.
        std::uint32_t longest = 0;      ///< Characters of the longest headword through this node.
    };

    /// A headword on its way in. The hash of each of its beginnings is known before any node is, so
    /// that the memory of the nodes can be on its way, too.
    struct Pending {
        std::vector<CharacterKey> keys;
        std::vector<std::uint64_t> hashes;
    };

    /// The nodes along the headword added last: neighbours in a word list share their beginnings.
    struct Path {
        std::vector<CharacterKey> keys;
        std::vector<Node> nodes;
    };

    class Window;

    static constexpr Node root = 0xFFFFFFFF;
    static constexpr std::uint64_t rootHash = 0;
    static constexpr std::size_t directKeys = 0x10000;
    static constexpr std::size_t pendingEntries = 16;

    /// The hash of a beginning and one more character; its high bits are a place in the table.
    static constexpr std::uint64_t extendHash(std::uint64_t hash, CharacterKey key) {
        const std::uint64_t product = (hash ^ (key + 1)) * 0x9E3779B97F4A7C15U;
        return product ^ product >> 29;
    }

    const Slot* slotTable() const { return static_cast<const Slot*>(table_.data()); }
    Slot* slotTable() { return static_cast<Slot*>(table_.data()); }
    std::size_t place(std::uint64_t hash) const { return static_cast<std::size_t>(hash >> shift_); }

    /// Where the search for a word that covers a position begins.
    std::size_t firstStart(std::size_t position) const {
        return position + 1 > maxHeadwordLength_ ? position + 1 - maxHeadwordLength_ : 0;
    }
    template <typename KeyAt>
    std::optional<Occurrence> search(std::size_t count, std::size_t position, KeyAt keyAt) const;

    Node child(Node parent, CharacterKey key, std::uint64_t hash) const;
    Node firstNode(CharacterKey key) const;
    Node addNode(Node parent, CharacterKey key, std::uint64_t hash);
    void grow();
    void enter(std::string_view headword, Pending& pending);
    void insertOldest();
    Node insert(const Pending& headword, Path& path);
    void addPosting(Node node, std::uint32_t posting);

    MemoryBlock table_;
    unsigned shift_ = 0;
    std::size_t capacity_ = 0;
    std::vector<Node> created_;  ///< While building: all nodes, parents before children.
    std::vector<Node> first_;    ///< The nodes below the root by key, for the keys below 10000 hex.
    std::vector<std::uint16_t> longestFrom_;  ///< Their `longest`, close together.
    std::vector<std::uint32_t> next_;         ///< Postings 2 × entry + which headword, in rings.
    CharacterKeys keys_;
    std::size_t maxHeadwordLength_ = 1;
    std::size_t entered_ = 0;
    std::size_t inserted_ = 0;
    std::vector<std::array<Pending, 2>> pending_;  ///< A ring of entries not inserted yet.
    std::array<Path, 2> paths_;
};

}  // namespace velmora
