// SPDX-License-Identifier: MIT
#include "VelmoraCore/ExampleSentence.h"

#include "VelmoraCore/CanonicalText.h"

namespace velmora {

bool ExampleSentence::operator==(const ExampleSentence& other) const {
    return id == other.id && canonicallyEqual(hanzi, other.hanzi) &&
           canonicallyEqual(pinyin, other.pinyin) && canonicallyEqual(english, other.english);
}

}  // namespace velmora
