// SPDX-License-Identifier: MIT
#include "VelmoraCore/CharacterKeys.h"

#include "VelmoraCore/CanonicalText.h"
#include "VelmoraCore/CharacterText.h"

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

void CharacterKeys::addAll(std::string_view text, std::vector<CharacterKey>& keys) {
    keys.reserve(keys.size() + text.size() / 3 + 1);
    const std::size_t before = keys.size();
    if (isValidUtf8(text) && appendPlain(text, keys)) {
        return;
    }
    keys.resize(before);
    const CharacterText characters(text);
    for (std::size_t index = 0; index < characters.count(); ++index) {
        keys.push_back(add(characters[index]));
    }
}

/// Appends code points as long as each is a character and its own key; false where one is not.
bool CharacterKeys::appendPlain(std::string_view text, std::vector<CharacterKey>& keys) {
    for (std::size_t at = 0; at < text.size();) {
        const Utf8Scalar scalar = utf8ScalarAt(text.data() + at);
        if (!isPlainScalar(scalar.value) &&
            (scalar.value >= 0x80 || text.substr(at, 2) == "\r\n")) {
            return false;
        }
        keys.push_back(scalar.value);
        at += scalar.length;
    }
    return true;
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
