// SPDX-License-Identifier: MIT
#include "Velmora/CommandLine/Core/TextLayout.h"

#include <unicode/uchar.h>
#include <unicode/utf8.h>

#include <cstdint>
#include <vector>

namespace velmora {

namespace {

constexpr std::string_view replacement = "\xEF\xBF\xBD";

/// Calls visit(scalar, bytes) for each scalar of a text; the scalar is negative where the bytes
/// are not UTF-8.
template <typename Visit>
void forEachScalar(std::string_view text, Visit visit) {
    const auto* bytes = reinterpret_cast<const std::uint8_t*>(text.data());
    std::size_t at = 0;
    while (at < text.size()) {
        const std::size_t begin = at;
        UChar32 scalar = 0;
        U8_NEXT(bytes, at, text.size(), scalar);
        visit(scalar, text.substr(begin, at - begin));
    }
}

std::size_t columnsOfScalar(UChar32 scalar) {
    const auto category = u_charType(scalar);
    if (category == U_NON_SPACING_MARK || category == U_ENCLOSING_MARK ||
        category == U_FORMAT_CHAR || category == U_CONTROL_CHAR) {
        return 0;
    }
    const int width = u_getIntPropertyValue(scalar, UCHAR_EAST_ASIAN_WIDTH);
    return width == U_EA_WIDE || width == U_EA_FULLWIDTH ? 2 : 1;
}

/// A run of text that is never broken, and whether a blank stands before it.
struct Piece {
    std::string text;
    std::size_t columns = 0;
    bool blankBefore = false;
};

/// Closing punctuation that must not begin a line.
bool sticksToPrevious(UChar32 scalar) {
    const auto category = u_charType(scalar);
    return category == U_END_PUNCTUATION || category == U_FINAL_PUNCTUATION ||
           category == U_OTHER_PUNCTUATION;
}

std::vector<Piece> piecesOf(std::string_view text) {
    std::vector<Piece> pieces;
    bool blankBefore = false;
    bool afterWide = false;
    forEachScalar(text, [&](UChar32 scalar, std::string_view bytes) {
        if (scalar == ' ') {
            blankBefore = true;
            return;
        }
        const std::size_t columns = scalar < 0 ? 1 : columnsOfScalar(scalar);
        const bool wide = columns == 2;
        const bool mayBegin = columns > 0 && !sticksToPrevious(scalar);
        if (pieces.empty() || blankBefore || (mayBegin && (wide || afterWide))) {
            pieces.push_back({.text = {}, .columns = 0, .blankBefore = blankBefore});
        }
        pieces.back().text.append(bytes);
        pieces.back().columns += columns;
        afterWide = wide;
        blankBefore = false;
    });
    return pieces;
}

}  // namespace

std::string printable(std::string_view text) {
    std::string result;
    result.reserve(text.size());
    forEachScalar(text, [&](UChar32 scalar, std::string_view bytes) {
        result.append(scalar < 0 || u_charType(scalar) == U_CONTROL_CHAR ? replacement : bytes);
    });
    return result;
}

std::size_t columnsOf(std::string_view utf8) {
    std::size_t columns = 0;
    forEachScalar(utf8, [&](UChar32 scalar, std::string_view) {
        columns += scalar < 0 ? 1 : columnsOfScalar(scalar);
    });
    return columns;
}

std::string wrapText(std::string_view utf8, std::size_t used, std::size_t indent,
                     std::size_t width) {
    if (width == 0) {
        return std::string(utf8);
    }
    std::string result;
    std::size_t column = used;
    bool lineIsEmpty = true;
    for (const Piece& piece : piecesOf(utf8)) {
        const std::size_t blank = piece.blankBefore && !lineIsEmpty ? 1 : 0;
        if (!lineIsEmpty && column + blank + piece.columns > width) {
            result.append("\n").append(indent, ' ');
            column = indent;
        } else {
            result.append(blank, ' ');
            column += blank;
        }
        result.append(piece.text);
        column += piece.columns;
        lineIsEmpty = false;
    }
    return result;
}

std::string padded(std::string_view utf8, std::size_t columns) {
    std::string result(utf8);
    const std::size_t own = columnsOf(utf8);
    if (own < columns) {
        result.append(columns - own, ' ');
    }
    return result;
}

}  // namespace velmora
