// SPDX-License-Identifier: MIT
#include "Velmora/Platform/Recognition/ForeignLetters.h"

#include <algorithm>
#include <string_view>

namespace velmora {

namespace {

constexpr std::u32string_view hiragana =
    U"あいうえおかがきぎくぐけげこごさざしじすずせぜそぞただちぢっつづてでとどなにぬねのはばぱ"
    U"ひびぴふぶぷへべぺほぼぽまみむめもゃやゅゆょよらりるれろわをん";
/// Without those that are a Chinese character too, or nearly: エオカタチトニハヒミムロ and more.
constexpr std::u32string_view katakana =
    U"アウガキギクグケゲコゴサザシジスズゼソゾダッツヅデドナヌネバパビピフブプベペホボポマモャヤ"
    U"ュユョヨラリルワヲン";
constexpr std::u32string_view initials = U"가나다라마바사아자차하";  ///< Each with the first vowel.
constexpr std::u32string_view vowels = U"아어오우으이애에여";
constexpr std::u32string_view finals = U"아악안알암앗앙";

constexpr char32_t firstSyllable = 0xAC00;
constexpr char32_t syllablesOfVowel = 28;
constexpr char32_t syllablesOfInitial = 21 * syllablesOfVowel;

constexpr char32_t initialOf(char32_t syllable) {
    return (syllable - firstSyllable) / syllablesOfInitial * syllablesOfInitial;
}

constexpr char32_t vowelOf(char32_t syllable) {
    return (syllable - firstSyllable) % syllablesOfInitial / syllablesOfVowel * syllablesOfVowel;
}

constexpr char32_t finalOf(char32_t syllable) {
    return (syllable - firstSyllable) % syllablesOfVowel;
}

}  // namespace

std::vector<char32_t> foreignLetters() {
    std::vector<char32_t> letters(hiragana.begin(), hiragana.end());
    letters.insert(letters.end(), katakana.begin(), katakana.end());
    for (const char32_t initial : initials) {
        for (const char32_t vowel : vowels) {
            for (const char32_t ending : finals) {
                letters.push_back(firstSyllable + initialOf(initial) + vowelOf(vowel) +
                                  finalOf(ending));
            }
        }
    }
    std::sort(letters.begin(), letters.end());
    return letters;
}

std::vector<char32_t> withForeignLetters(std::vector<char32_t> characters) {
    const std::vector<char32_t> letters = foreignLetters();
    characters.insert(characters.end(), letters.begin(), letters.end());
    std::sort(characters.begin(), characters.end());
    characters.erase(std::unique(characters.begin(), characters.end()), characters.end());
    return characters;
}

}  // namespace velmora
