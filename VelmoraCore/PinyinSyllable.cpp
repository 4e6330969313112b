// SPDX-License-Identifier: MIT
#include "VelmoraCore/PinyinSyllable.h"

#include "VelmoraCore/CanonicalText.h"

namespace velmora {

bool PinyinSyllable::operator==(const PinyinSyllable& other) const {
    return tone == other.tone && canonicallyEqual(numbered, other.numbered) &&
           canonicallyEqual(marked, other.marked);
}

}  // namespace velmora
