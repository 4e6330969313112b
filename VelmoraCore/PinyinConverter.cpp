// SPDX-License-Identifier: MIT
#include "VelmoraCore/PinyinConverter.h"

#include <unicode/uchar.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <optional>

#include "VelmoraCore/CanonicalText.h"
#include "VelmoraCore/CharacterText.h"
#include "VelmoraCore/Utf8.h"

namespace velmora {
namespace {

struct MarkedVowel {
    std::string_view base;
    std::array<std::string_view, 4> marked;  ///< Tones 1 to 4.
};

constexpr std::array<MarkedVowel, 6> toneMarks{{{"a", {"ā", "á", "ǎ", "à"}},
                                                {"e", {"ē", "é", "ě", "è"}},
                                                {"i", {"ī", "í", "ǐ", "ì"}},
                                                {"o", {"ō", "ó", "ǒ", "ò"}},
                                                {"u", {"ū", "ú", "ǔ", "ù"}},
                                                {"ü", {"ǖ", "ǘ", "ǚ", "ǜ"}}}};

/// The characters of a syllable, after the letter ü was normalised; views into a text that outlives
/// them.
using Characters = std::vector<std::string_view>;

bool isAscii(std::string_view text) {
    return std::all_of(text.begin(), text.end(),
                       [](char byte) { return static_cast<signed char>(byte) >= 0; });
}

const MarkedVowel* vowel(std::string_view character) {
    const auto* const found = std::find_if(
        toneMarks.begin(), toneMarks.end(),
        [&](const MarkedVowel& candidate) { return canonicallyEqual(candidate.base, character); });
    return found == toneMarks.end() ? nullptr : found;
}

/// Bytes of ASCII are characters, except that CR LF is one; neither takes part in any rule.
void appendAsciiCharacters(std::string_view text, Characters& characters) {
    for (std::size_t at = 0; at < text.size(); ++at) {
        if (text[at] == 'u' && text.substr(at, 2) == "u:") {
            characters.push_back("ü");
            ++at;
        } else if (text[at] == 'v') {
            characters.push_back("ü");
        } else {
            characters.push_back(text.substr(at, 1));
        }
    }
}

void appendCharacters(const CharacterText& text, Characters& characters) {
    for (std::size_t at = 0; at < text.count(); ++at) {
        const std::string_view character = text[at];
        if (character == "u" && at + 1 < text.count() && text[at + 1] == ":") {
            characters.push_back("ü");
            ++at;
        } else if (character == "v") {
            characters.push_back("ü");
        } else {
            characters.push_back(character);
        }
    }
}

/// The whole-number value of a character of one code point, be it "4", "④" or "四".
std::optional<double> wholeNumberValue(std::string_view character) {
    const Utf8Scalar scalar = utf8ScalarAt(character.data());
    if (scalar.length != character.size()) {
        return std::nullopt;
    }
    if (scalar.value < 0x80) {
        const bool digit = scalar.value >= U'0' && scalar.value <= U'9';
        return digit ? std::optional<double>(scalar.value - U'0') : std::nullopt;
    }
    const double value = u_getNumericValue(static_cast<UChar32>(scalar.value));
    if (value == U_NO_NUMERIC_VALUE || std::floor(value) != value) {
        return std::nullopt;
    }
    return value;
}

/// The position of the vowel that takes the tone mark.
std::optional<std::size_t> markedPosition(const Characters& body) {
    const auto position = [&](auto found) -> std::optional<std::size_t> {
        return found == body.end()
                   ? std::nullopt
                   : std::optional<std::size_t>(static_cast<std::size_t>(found - body.begin()));
    };
    if (const auto a = position(std::find(body.begin(), body.end(), "a"))) {
        return a;
    }
    if (const auto e = position(std::find(body.begin(), body.end(), "e"))) {
        return e;
    }
    constexpr std::array<std::string_view, 2> ou{"o", "u"};
    if (std::search(body.begin(), body.end(), ou.begin(), ou.end()) != body.end()) {
        return position(std::find(body.begin(), body.end(), "o"));
    }
    for (std::size_t index = body.size(); index > 0; --index) {
        if (vowel(body[index - 1]) != nullptr) {
            return index - 1;
        }
    }
    return std::nullopt;
}

/// Removes the tone digit from the end and puts its mark on the vowel it belongs to.
PinyinTone applyTone(Characters& characters) {
    const std::optional<double> number =
        characters.empty() ? std::nullopt : wholeNumberValue(characters.back());
    if (!number) {
        return PinyinTone::neutral;
    }
    characters.pop_back();
    if (*number < 1 || *number > 4) {
        return PinyinTone::neutral;
    }
    const auto digit = static_cast<std::size_t>(*number);
    if (const auto marked = markedPosition(characters)) {
        characters[*marked] = vowel(characters[*marked])->marked[digit - 1];
    }
    return static_cast<PinyinTone>(digit);
}

PinyinSyllable converted(std::string_view numbered, Characters& characters) {
    PinyinSyllable syllable;
    syllable.numbered = numbered;
    syllable.tone = applyTone(characters);
    for (const std::string_view character : characters) {
        syllable.marked += character;
    }
    return syllable;
}

}  // namespace

PinyinSyllable PinyinConverter::convertSyllable(std::string_view syllable) {
    Characters characters;
    characters.reserve(syllable.size());
    if (isAscii(syllable)) {
        appendAsciiCharacters(syllable, characters);
        return converted(syllable, characters);
    }
    const CharacterText text(syllable);
    appendCharacters(text, characters);
    return converted(syllable, characters);
}

std::vector<PinyinSyllable> PinyinConverter::convertPhrase(std::string_view numbered) {
    std::vector<PinyinSyllable> syllables;
    const auto add = [&](std::string_view piece) {
        if (!piece.empty()) {
            syllables.push_back(convertSyllable(piece));
        }
    };
    if (isAscii(numbered)) {
        std::size_t start = 0;
        for (std::size_t at = 0; at <= numbered.size(); ++at) {
            if (at == numbered.size() || numbered[at] == ' ') {
                add(numbered.substr(start, at - start));
                start = at + 1;
            }
        }
        return syllables;
    }
    const CharacterText text(numbered);
    std::size_t start = 0;
    for (std::size_t at = 0; at <= text.count(); ++at) {
        if (at == text.count() || text[at] == " ") {
            add(text.slice(start, at));
            start = at + 1;
        }
    }
    return syllables;
}

std::string PinyinConverter::markedPhrase(std::string_view numbered) {
    return joinMarked(convertPhrase(numbered));
}

std::string PinyinConverter::joinMarked(const std::vector<PinyinSyllable>& syllables) {
    std::string joined;
    for (const PinyinSyllable& syllable : syllables) {
        if (&syllable != &syllables.front()) {
            joined += ' ';
        }
        joined += syllable.marked;
    }
    return joined;
}

}  // namespace velmora
