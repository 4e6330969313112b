// SPDX-License-Identifier: MIT
#include "VelmoraCore/LookupResult.h"

#include "VelmoraCore/CanonicalText.h"

namespace velmora {

bool LookupResult::operator==(const LookupResult& other) const {
    return range == other.range && canonicallyEqual(matchedText, other.matchedText) &&
           entry == other.entry && characterBreakdown == other.characterBreakdown &&
           alternatives == other.alternatives;
}

}  // namespace velmora
