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
    if (character.size() == 1) {
        constexpr std::string_view plainVowels = "aeiou";
        const std::size_t number = plainVowels.find(character.front());
        return number == std::string_view::npos ? nullptr : &toneMarks[number];
    }
    const auto* const found = std::find_if(
        toneMarks.begin(), toneMarks.end(),
        [&](const MarkedVowel& candidate) { return canonicallyEqual(candidate.base, character); });
    return found == toneMarks.end() ? nullptr : found;
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

/// Stands for ü among bytes of ASCII.
constexpr char umlaut = '\x80';

/// The longest syllable of ASCII that takes the short way; real ones have seven bytes.
constexpr std::size_t shortSyllable = 16;

const MarkedVowel* asciiVowel(char byte) {
    return byte == umlaut ? &toneMarks.back() : vowel(std::string_view(&byte, 1));
}

/// The same as `markedPosition` for a body in which every byte is a character.
std::size_t asciiMarkedPosition(std::string_view body) {
    std::size_t position = body.find('a');
    if (position == std::string_view::npos) {
        position = body.find('e');
    }
    if (position == std::string_view::npos && body.find("ou") != std::string_view::npos) {
        position = body.find('o');
    }
    for (std::size_t at = body.size(); position == std::string_view::npos && at > 0; --at) {
        position = asciiVowel(body[at - 1]) != nullptr ? at - 1 : position;
    }
    return position;
}

char* append(std::string_view bytes, char* to) {
    return std::copy(bytes.begin(), bytes.end(), to);
}

/// What `converted` gives for a short syllable of ASCII, without splitting it into characters. (The
/// one character of two bytes that ASCII has, CR LF, takes part in no rule.)
PinyinSyllable convertedAscii(std::string_view numbered) {
    std::array<char, shortSyllable> bytes{};
    std::size_t size = 0;
    for (std::size_t at = 0; at < numbered.size(); ++at) {
        const bool colon = numbered[at] == 'u' && numbered.substr(at, 2) == "u:";
        bytes[size++] = colon || numbered[at] == 'v' ? umlaut : numbered[at];
        at += static_cast<std::size_t>(colon);
    }
    std::string_view body(bytes.data(), size);
    int digit = 0;
    if (!body.empty() && body.back() >= '0' && body.back() <= '9') {
        digit = body.back() - '0';
        body.remove_suffix(1);
    }
    const bool hasTone = digit >= 1 && digit <= 4;
    const std::size_t marked = hasTone ? asciiMarkedPosition(body) : std::string_view::npos;
    PinyinSyllable syllable;
    syllable.numbered = numbered;
    syllable.tone = hasTone ? static_cast<PinyinTone>(digit) : PinyinTone::neutral;
    if (marked == std::string_view::npos && body.find(umlaut) == std::string_view::npos) {
        syllable.marked = body;
        return syllable;
    }
    std::array<char, 2 * shortSyllable> written{};
    char* end = written.data();
    for (std::size_t at = 0; at < body.size(); ++at) {
        if (at == marked) {
            end = append(asciiVowel(body[at])->marked[static_cast<std::size_t>(digit) - 1], end);
        } else if (body[at] == umlaut) {
            end = append(toneMarks.back().base, end);
        } else {
            *end++ = body[at];
        }
    }
    syllable.marked.assign(written.data(), end);
    return syllable;
}

}  // namespace

PinyinSyllable PinyinConverter::convertSyllable(std::string_view syllable) {
    if (syllable.size() <= shortSyllable && isAscii(syllable)) {
        return convertedAscii(syllable);
    }
    Characters characters;
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
        syllables.reserve(
            1 + static_cast<std::size_t>(std::count(numbered.begin(), numbered.end(), ' ')));
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
    std::size_t length = syllables.size();
    for (const PinyinSyllable& syllable : syllables) {
        length += syllable.marked.size();
    }
    joined.reserve(syllables.empty() ? 0 : length - 1);
    for (const PinyinSyllable& syllable : syllables) {
        if (&syllable != &syllables.front()) {
            joined += ' ';
        }
        joined += syllable.marked;
    }
    return joined;
}

}  // namespace velmora
