// SPDX-License-Identifier: MIT
#include "Velmora/Presentation/HeadwordCharacter.h"

#include "VelmoraCore/CharacterText.h"

namespace velmora {

std::vector<HeadwordCharacter> HeadwordCharacter::pair(const DictionaryEntry& entry,
                                                       std::string_view text) {
    const CharacterText characters(text);
    std::vector<HeadwordCharacter> paired;
    paired.reserve(characters.count());
    for (std::size_t i = 0; i < characters.count(); ++i) {
        const std::string_view character = characters[i];
        paired.push_back(
            {QString::fromUtf8(character.data(), static_cast<qsizetype>(character.size())),
             i < entry.syllables.size() ? static_cast<int>(entry.syllables[i].tone) : noTone});
    }
    return paired;
}

}  // namespace velmora
