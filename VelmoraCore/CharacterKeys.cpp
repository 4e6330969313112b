// SPDX-License-Identifier: MIT
#include "VelmoraCore/CharacterKeys.h"

#include "VelmoraCore/CanonicalText.h"

namespace velmora {
namespace {

constexpr CharacterKey firstOfSeveralScalars = 0x110000;

bool isOneScalar(std::string_view text) {
    return utf8ScalarAt(text.data()).length == text.size();
}

}  // namespace

CharacterKey CharacterKeys::add(std::string_view character) {
    const CharacterKey known = find(character);
    if (known != unknown) {
        return known;
    }
    const auto next = static_cast<CharacterKey>(firstOfSeveralScalars + keys_.size());
    return keys_.emplace(composedText(character), next).first->second;
}

CharacterKey CharacterKeys::findComposed(std::string_view character) const {
    const std::string composed = composedText(character);
    if (isOneScalar(composed)) {
        return utf8ScalarAt(composed.data()).value;
    }
    const auto found = keys_.find(std::string_view(composed));
    return found == keys_.end() ? unknown : found->second;
}

}  // namespace velmora
