// SPDX-License-Identifier: MIT
#include "Velmora/Platform/Recognition/DictionaryWords.h"

#include "VelmoraCore/DictionaryStore.h"

namespace velmora {

std::shared_ptr<const WordPatterns> wordPatternsOf(const DictionaryStore& store) {
    auto patterns = std::make_shared<WordPatterns>();
    for (std::size_t i = 0; i < store.entryCount(); ++i) {
        const DictionaryEntry entry = store.entry(i);
        patterns->add(entry.simplified);
        if (entry.traditional != entry.simplified) {
            patterns->add(entry.traditional);
        }
    }
    patterns->finish();
    return patterns;
}

}  // namespace velmora
