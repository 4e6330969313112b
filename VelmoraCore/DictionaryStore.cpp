// SPDX-License-Identifier: MIT
#include "VelmoraCore/DictionaryStore.h"

#include <utility>

#include "VelmoraCore/CanonicalText.h"
#include "VelmoraCore/LineSplitter.h"
#include "VelmoraCore/Utf8.h"

namespace velmora {
namespace {

/// A word list has a line for about this many bytes.
constexpr std::size_t bytesPerLine = 78;

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
      index_(entries_.size() + wordList_->text().size() / bytesPerLine),
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
    LineSplitter splitter(text, wordList_->hasRareLineEnds());
    while (const auto line = splitter.next()) {
        if (const auto fields = CedictLine::parse(*line)) {
            const auto start = static_cast<std::size_t>(line->data() - text.data());
            lines_.push_back(placeOf(*line, start, *fields));
            index_.add(fields->traditional, fields->simplified);
        }
    }
    lines_.shrink_to_fit();
}

DictionaryStore::Line DictionaryStore::placeOf(std::string_view line, std::size_t start,
                                               const CedictLine& fields) {
    Line place{static_cast<std::uint32_t>(start), static_cast<std::uint32_t>(line.size()), 0, 0, 0};
    const bool regular =
        fields.traditional.data() == line.data() &&
        fields.simplified.data() == fields.traditional.data() + fields.traditional.size() + 1 &&
        fields.reading.data() == fields.simplified.data() + fields.simplified.size() + 2 &&
        fields.glossList.data() == fields.reading.data() + fields.reading.size() + 3 &&
        fields.glossList.data() + fields.glossList.size() + 1 == line.data() + line.size();
    if (regular && fields.traditional.size() < 0x100 && fields.simplified.size() < 0x100 &&
        fields.reading.size() < 0x10000) {
        place.traditional = static_cast<std::uint8_t>(fields.traditional.size());
        place.simplified = static_cast<std::uint8_t>(fields.simplified.size());
        place.reading = static_cast<std::uint16_t>(fields.reading.size());
    }
    return place;
}

CedictLine DictionaryStore::fieldsOf(const Line& line) const {
    const std::string_view text = wordList_->text().substr(line.start, line.length);
    if (line.traditional == 0) {
        return *CedictLine::parse(text);
    }
    const std::size_t simplified = line.traditional + std::size_t{1};
    const std::size_t reading = simplified + line.simplified + 2;
    const std::size_t glosses = reading + line.reading + 3;
    return {text.substr(0, line.traditional), text.substr(simplified, line.simplified),
            text.substr(reading, line.reading), text.substr(glosses, text.size() - glosses - 1)};
}

Uuid DictionaryStore::identifier(std::size_t number) const {
    return Uuid::fromRandomBits(spread(identifierSeedHigh_ + number),
                                spread(identifierSeedLow_ ^ number));
}

DictionaryEntry DictionaryStore::entryOfLine(std::size_t line) const {
    const CedictLine fields = fieldsOf(lines_[line]);
    std::vector<EntryDefinition> definitions;
    definitions.push_back({identifier(2 * line + 1), std::nullopt, fields.glosses()});
    return DictionaryEntry(std::string(fields.simplified), std::string(fields.traditional),
                           std::string(fields.reading), std::move(definitions), {}, std::nullopt,
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
    found.reserve(index_.entryCount(occurrence.node));
    index_.forEachEntry(occurrence.node,
                        [&](std::size_t number) { found.push_back(entry(number)); });
    return found;
}

std::vector<DictionaryEntry> DictionaryStore::otherEntries(
    const HeadwordIndex::Occurrence& occurrence) const {
    const std::size_t first = index_.firstEntry(occurrence.node);
    std::vector<DictionaryEntry> others;
    others.reserve(index_.entryCount(occurrence.node) - 1);
    index_.forEachEntry(occurrence.node, [&](std::size_t number) {
        if (number != first) {
            others.push_back(entry(number));
        }
    });
    return others;
}

std::optional<std::size_t> DictionaryStore::firstEntryOfCharacter(
    std::string_view character) const {
    const auto node = index_.findCharacter(character);
    return node ? std::optional(index_.firstEntry(*node)) : std::nullopt;
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
