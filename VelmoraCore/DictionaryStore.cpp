// SPDX-License-Identifier: MIT
#include "VelmoraCore/DictionaryStore.h"

#include <utility>

#include "VelmoraCore/CanonicalText.h"
#include "VelmoraCore/CedictLine.h"
#include "VelmoraCore/LineSplitter.h"
#include "VelmoraCore/Utf8.h"

namespace velmora {
namespace {

/// A word list has a line for about this many bytes.
constexpr std::size_t bytesPerLine = 64;

/// Spreads a number over 64 bits, one to one (the finaliser of SplitMix64).
constexpr std::uint64_t spread(std::uint64_t value) {
    value = (value ^ value >> 30) * 0xBF58476D1CE4E5B9U;
    value = (value ^ value >> 27) * 0x94D049BB133111EBU;
    return value ^ value >> 31;
}

std::uint64_t seedFrom(const Uuid& uuid) {
    std::uint64_t seed = 0;
    for (const std::uint8_t byte : uuid.bytes) {
        seed = spread(seed ^ byte);
    }
    return seed;
}

}  // namespace

bool DictionaryStore::Match::operator==(const Match& other) const {
    return range == other.range && canonicallyEqual(text, other.text) && entries == other.entries;
}

DictionaryStore::DictionaryStore(std::vector<DictionaryEntry> entries)
    : DictionaryStore(std::move(entries), DictionaryText("")) {}

DictionaryStore::DictionaryStore(std::vector<DictionaryEntry> entries, DictionaryText wordList)
    : entries_(std::move(entries)),
      wordList_(std::move(wordList)),
      index_(2 * (entries_.size() + wordList_->text().size() / bytesPerLine)),
      identifierSeedHigh_(seedFrom(Uuid::random())),
      identifierSeedLow_(seedFrom(Uuid::random())) {
    for (const DictionaryEntry& entry : entries_) {
        index_.add(repairedUtf8(entry.traditional), repairedUtf8(entry.simplified));
    }
    indexWordList();
    index_.finish();
}

void DictionaryStore::indexWordList() {
    const std::string_view text = wordList_->text();
    lines_.reserve(text.size() / bytesPerLine);
    LineSplitter splitter(text);
    while (const auto line = splitter.next()) {
        if (const auto fields = CedictLine::parse(*line)) {
            lines_.push_back({static_cast<std::uint32_t>(line->data() - text.data()),
                              static_cast<std::uint32_t>(line->size())});
            index_.add(fields->traditional, fields->simplified);
        }
    }
    lines_.shrink_to_fit();
}

Uuid DictionaryStore::identifier(std::size_t number) const {
    return Uuid::fromRandomBits(spread(identifierSeedHigh_ + number),
                                spread(identifierSeedLow_ ^ number));
}

DictionaryEntry DictionaryStore::entryOfLine(std::size_t line) const {
    const Line place = lines_[line];
    const auto fields = CedictLine::parse(wordList_->text().substr(place.start, place.length));
    std::vector<EntryDefinition> definitions;
    definitions.push_back({identifier(2 * line + 1), std::nullopt, fields->glosses()});
    return DictionaryEntry(std::string(fields->simplified), std::string(fields->traditional),
                           std::string(fields->reading), std::move(definitions), {}, std::nullopt,
                           identifier(2 * line));
}

DictionaryEntry DictionaryStore::entry(std::size_t index) const {
    return index < entries_.size() ? entries_[index] : entryOfLine(index - entries_.size());
}

std::vector<DictionaryEntry> DictionaryStore::allEntries() const {
    std::vector<DictionaryEntry> all;
    all.reserve(entryCount());
    for (std::size_t index = 0; index < entryCount(); ++index) {
        all.push_back(entry(index));
    }
    return all;
}

std::vector<DictionaryEntry> DictionaryStore::entries(std::string_view headword) const {
    const auto node = index_.find(CharacterText(headword));
    return node ? entries(HeadwordIndex::Occurrence{*node}) : std::vector<DictionaryEntry>();
}

std::vector<DictionaryEntry> DictionaryStore::entries(
    const HeadwordIndex::Occurrence& occurrence) const {
    std::vector<DictionaryEntry> found;
    index_.forEachEntry(occurrence.node,
                        [&](std::size_t number) { found.push_back(entry(number)); });
    return found;
}

void DictionaryStore::splitEntries(const HeadwordIndex::Occurrence& occurrence,
                                   DictionaryEntry& first,
                                   std::vector<DictionaryEntry>& others) const {
    const std::size_t firstNumber = index_.firstEntry(occurrence.node);
    first = entry(firstNumber);
    index_.forEachEntry(occurrence.node, [&](std::size_t number) {
        if (number != firstNumber) {
            others.push_back(entry(number));
        }
    });
}

std::optional<DictionaryEntry> DictionaryStore::firstEntryOfCharacter(
    std::string_view character) const {
    const auto node = index_.findCharacter(character);
    return node ? std::optional(entry(index_.firstEntry(*node))) : std::nullopt;
}

std::optional<HeadwordIndex::Occurrence> DictionaryStore::findLongestCovering(
    const CharacterText& text, long long hoveredOffset) const {
    if (hoveredOffset < 0 || static_cast<unsigned long long>(hoveredOffset) >= text.count()) {
        return std::nullopt;
    }
    return index_.longestCovering(text, static_cast<std::size_t>(hoveredOffset));
}

std::optional<DictionaryStore::Match> DictionaryStore::longestMatchCovering(
    std::string_view text, long long hoveredOffset) const {
    return longestMatchCovering(CharacterText(text), hoveredOffset);
}

std::optional<DictionaryStore::Match> DictionaryStore::longestMatchCovering(
    const CharacterText& text, long long hoveredOffset) const {
    const auto found = findLongestCovering(text, hoveredOffset);
    if (!found) {
        return std::nullopt;
    }
    return Match{entries(*found),
                 {static_cast<long long>(found->start), static_cast<long long>(found->end)},
                 std::string(text.slice(found->start, found->end))};
}

}  // namespace velmora
