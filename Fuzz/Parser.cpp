// SPDX-License-Identifier: MIT
#include "VelmoraCore/CedictParser.h"

#include <cstdint>
#include <cstdlib>

#include "VelmoraCore/DictionaryStore.h"

/// The parser and the store that reads the same text agree on every entry, and every headword is
/// found again.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    velmora::DictionaryText list(text);
    const auto parsed = velmora::CedictParser::parse(list.text());
    const velmora::DictionaryStore store({}, std::move(list));
    if (store.entryCount() != parsed.size()) {
        std::abort();
    }
    for (std::size_t index = 0; index < parsed.size(); ++index) {
        velmora::DictionaryEntry entry = store.entry(index);
        bool found = false;
        for (const auto& candidate : store.entries(entry.simplified)) {
            found = found || candidate == entry;
        }
        const bool longHeadword = velmora::CharacterText(entry.simplified).count() >
                                  velmora::HeadwordIndex::longestHeadword;
        entry.id = parsed[index].id;
        entry.definitions[0].id = parsed[index].definitions[0].id;
        if (!(entry == parsed[index]) || !(found || longHeadword)) {
            std::abort();
        }
    }
    return 0;
}
