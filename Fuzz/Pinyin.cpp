// SPDX-License-Identifier: MIT
#include <cstdint>
#include <cstdlib>
#include <string>

#include "VelmoraCore/PinyinConverter.h"
#include "VelmoraCore/Utf8.h"

/// A phrase is the sum of its syllables, each of which keeps what it was made of and is valid text;
/// the short way for short syllables gives what the long way gives.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text(reinterpret_cast<const char*>(data), size);
    const auto syllables = velmora::PinyinConverter::convertPhrase(text);
    for (const auto& syllable : syllables) {
        const std::string padding(32, 'x');
        const auto again = velmora::PinyinConverter::convertSyllable(syllable.numbered);
        const auto padded = velmora::PinyinConverter::convertSyllable(padding + syllable.numbered);
        const bool joins = static_cast<signed char>(syllable.numbered.front()) < 0;
        if (!(again == syllable) || !velmora::isValidUtf8(syllable.marked) ||
            (!joins && padded.marked != padding + syllable.marked) ||
            (!joins && padded.tone != syllable.tone)) {
            std::abort();
        }
    }
    if (velmora::PinyinConverter::markedPhrase(text) !=
        velmora::PinyinConverter::joinMarked(syllables)) {
        std::abort();
    }
    return 0;
}
