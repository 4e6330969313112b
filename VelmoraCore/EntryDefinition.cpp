// SPDX-License-Identifier: MIT
#include "VelmoraCore/EntryDefinition.h"

#include <algorithm>

#include "VelmoraCore/CanonicalText.h"

namespace velmora {

bool EntryDefinition::operator==(const EntryDefinition& other) const {
    return id == other.id && partOfSpeech.has_value() == other.partOfSpeech.has_value() &&
           canonicallyEqual(partOfSpeech.value_or(""), other.partOfSpeech.value_or("")) &&
           std::equal(glosses.begin(), glosses.end(), other.glosses.begin(), other.glosses.end(),
                      canonicallyEqual);
}

}  // namespace velmora
