// SPDX-License-Identifier: MIT
#include "VelmoraCore/CedictLine.h"

#include <unicode/uchar.h>

#include <algorithm>
#include <cstddef>

#include "VelmoraCore/PlainScalar.h"
#include "VelmoraCore/Utf8.h"

namespace velmora {
namespace {

/// How a code point takes part in longer characters.
int clusterBreak(char32_t scalar) {
    return u_getIntPropertyValue(static_cast<UChar32>(scalar), UCHAR_GRAPHEME_CLUSTER_BREAK);
}

/// True when a code point joins the character before it.
bool extendsPrevious(char32_t scalar) {
    if (scalar < 0x80 || isPlainScalar(scalar)) {
        return false;
    }
    const int kind = clusterBreak(scalar);
    return kind == U_GCB_EXTEND || kind == U_GCB_ZWJ || kind == U_GCB_SPACING_MARK;
}

/// True when a code point joins the character after it.
bool startsLonger(char32_t scalar) {
    return scalar >= 0x80 && !isPlainScalar(scalar) && clusterBreak(scalar) == U_GCB_PREPEND;
}

/// True where the printable ASCII code point at a position is a character of its own: a bracket
/// under a combining mark is no bracket.
bool isCharacter(std::string_view text, std::size_t at) {
    const std::size_t after = at + 1;
    if (after < text.size() && extendsPrevious(utf8ScalarAt(text.data() + after).value)) {
        return false;
    }
    return at == 0 || !startsLonger(utf8ScalarBefore(text.data() + at).value);
}

/// The first position of an ASCII character at or after `from`, or npos.
std::size_t findCharacter(std::string_view line, char character, std::size_t from) {
    std::size_t at = line.find(character, from);
    while (at != std::string_view::npos && !isCharacter(line, at)) {
        at = line.find(character, at + 1);
    }
    return at;
}

/// Tab and the space separators (general category Zs).
constexpr bool isHorizontalSpace(char32_t scalar) {
    return scalar == ' ' || scalar == '\t' || scalar == 0xA0 || scalar == 0x1680 ||
           (scalar >= 0x2000 && scalar <= 0x200A) || scalar == 0x202F || scalar == 0x205F ||
           scalar == 0x3000;
}

std::string_view trimmed(std::string_view text) {
    while (!text.empty()) {
        const Utf8Scalar first = utf8ScalarAt(text.data());
        if (!isHorizontalSpace(first.value)) {
            break;
        }
        text.remove_prefix(first.length);
    }
    while (!text.empty()) {
        const Utf8Scalar last = utf8ScalarBefore(text.data() + text.size());
        if (!isHorizontalSpace(last.value)) {
            break;
        }
        text.remove_suffix(last.length);
    }
    return text;
}

/// Splits at the first run of blanks that has something before it. False where either side is
/// empty.
bool splitHeadwords(std::string_view part, CedictLine& fields) {
    std::size_t start = 0;
    std::size_t blank = findCharacter(part, ' ', 0);
    while (blank == start) {
        ++start;
        blank = findCharacter(part, ' ', start);
    }
    if (blank == std::string_view::npos) {
        return false;
    }
    fields.traditional = trimmed(part.substr(start, blank - start));
    fields.simplified = trimmed(part.substr(blank + 1));
    return !fields.traditional.empty() && !fields.simplified.empty();
}

/// The next piece between slashes at or after `from`; moves `from` behind it.
std::string_view nextGloss(std::string_view list, std::size_t& from) {
    const std::size_t slash = findCharacter(list, '/', from);
    const std::string_view gloss =
        list.substr(from, slash == std::string_view::npos ? slash : slash - from);
    from = slash == std::string_view::npos ? list.size() : slash + 1;
    return gloss;
}

/// True when the rest of a line begins and ends with a slash and has a gloss between.
bool splitGlosses(std::string_view rest, CedictLine& fields) {
    if (rest.size() < 3 || rest.front() != '/' || rest.back() != '/' || !isCharacter(rest, 0) ||
        !isCharacter(rest, rest.size() - 1)) {
        return false;
    }
    fields.glossList = rest.substr(1, rest.size() - 2);
    for (std::size_t at = 0; at < fields.glossList.size();) {
        if (!nextGloss(fields.glossList, at).empty()) {
            return true;
        }
    }
    return false;
}

}  // namespace

std::optional<CedictLine> CedictLine::parse(std::string_view line) {
    if (line.empty() || (line.front() == '#' && isCharacter(line, 0))) {
        return std::nullopt;
    }
    const std::size_t open = findCharacter(line, '[', 0);
    if (open == std::string_view::npos) {
        return std::nullopt;
    }
    const std::size_t close = findCharacter(line, ']', open);
    if (close == std::string_view::npos) {
        return std::nullopt;
    }
    CedictLine fields;
    fields.reading = trimmed(line.substr(open + 1, close - open - 1));
    if (fields.reading.empty() || !splitHeadwords(line.substr(0, open), fields) ||
        !splitGlosses(trimmed(line.substr(close + 1)), fields)) {
        return std::nullopt;
    }
    return fields;
}

std::vector<std::string> CedictLine::glosses() const {
    std::vector<std::string> pieces;
    pieces.reserve(1 +
                   static_cast<std::size_t>(std::count(glossList.begin(), glossList.end(), '/')));
    for (std::size_t at = 0; at < glossList.size();) {
        const std::string_view gloss = nextGloss(glossList, at);
        if (!gloss.empty()) {
            pieces.emplace_back(gloss);
        }
    }
    return pieces;
}

}  // namespace velmora
