// SPDX-License-Identifier: MIT
#include "VelmoraCore/LookupResult.h"

#include <utility>

#include "VelmoraCore/CanonicalText.h"

namespace velmora {

LookupResult LookupResult::ofCharacter(DictionaryEntry entry, std::string_view character,
                                       long long position) {
    std::vector<DictionaryEntry> breakdown{entry};
    return {std::move(entry),
            {position, position + 1},
            std::string(character),
            std::move(breakdown),
            {}};
}

bool LookupResult::operator==(const LookupResult& other) const {
    return range == other.range && canonicallyEqual(matchedText, other.matchedText) &&
           entry == other.entry && characterBreakdown == other.characterBreakdown &&
           alternatives == other.alternatives;
}

}  // namespace velmora
