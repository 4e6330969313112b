// SPDX-License-Identifier: MIT
#include "Velmora/Platform/Linux/AtSpi/AtSpiTerminal.h"

#include <unicode/uchar.h>

#include <algorithm>
#include <cmath>

#include "Velmora/Platform/Linux/AtSpi/AtSpiRequest.h"

namespace velmora {

namespace {

constexpr qsizetype rowLimit = 8192;
constexpr int rowsPerRange = 64;

}  // namespace

int AtSpiTerminal::cellsOf(char32_t character) {
    const auto c = static_cast<UChar32>(character);
    const auto category = static_cast<UCharCategory>(u_charType(c));
    if (category == U_NON_SPACING_MARK || category == U_ENCLOSING_MARK ||
        category == U_FORMAT_CHAR) {
        return 0;
    }
    const int width = u_getIntPropertyValue(c, UCHAR_EAST_ASIAN_WIDTH);
    return width == U_EA_WIDE || width == U_EA_FULLWIDTH ? 2 : 1;
}

std::optional<AtSpiTerminal::Row> AtSpiTerminal::rowAt(int offset) {
    const auto line = atspireply::line(
        bus_.callOnce(atspirequest::lineAtOffset(state_.object, offset), deadline_), rowLimit);
    if (!line || offset < line->from) {
        return std::nullopt;
    }
    const auto cell = atspireply::extents(bus_.callOnce(
        atspirequest::characterExtents(state_.object, line->from, state_.space.coordinates()),
        deadline_));
    if (!cell) {
        return std::nullopt;
    }
    Row row{line->text.toUcs4(), line->from, line->to - 1, *cell};
    while (!row.characters.isEmpty() && (row.characters.last() == '\n')) {
        row.characters.removeLast();
    }
    return row;
}

std::optional<int> AtSpiTerminal::offsetAt(Point capture) {
    const Point target = state_.space.targetFromCapture(capture);
    const auto nearest = atspireply::integer(
        bus_.call(atspirequest::offsetAtPoint(state_.object, state_.space, capture), deadline_));
    if (!nearest || *nearest < 0) {
        return std::nullopt;
    }
    std::optional<Row> row = rowAt(*nearest);
    if (row && target.y < row->firstCell.minY() && row->from > 0) {
        row = rowAt(row->from - 1);  // Right of a full row the next one's first place is named.
    }
    if (!row || target.y < row->firstCell.minY() || target.y >= row->firstCell.maxY()) {
        return std::nullopt;
    }
    const double column = (target.x - row->firstCell.x) / row->firstCell.width;
    int cell = 0;
    for (qsizetype i = 0; i < row->characters.size(); ++i) {
        const int cells = cellsOf(row->characters.at(i));
        if (column >= cell && column < cell + cells) {
            return row->from + static_cast<int>(i);
        }
        cell += cells;
    }
    return std::nullopt;
}

std::optional<int> AtSpiTerminal::characterAtColumnOf(int offset) {
    const std::optional<Row> row = rowAt(offset);
    if (!row) {
        return std::nullopt;
    }
    const int column = offset - row->from;
    const auto count = static_cast<int>(row->characters.size());
    int cell = 0;
    int character = 0;
    for (; character < count && cell < column; ++character) {
        cell += cellsOf(row->characters.at(character));
    }
    // The last offset stands for its own column and for all behind it, if there are any.
    const bool isOpen = offset >= row->last && (character < count || cell > column);
    return isOpen ? std::nullopt : std::optional(row->from + character);
}

std::optional<std::pair<int, int>> AtSpiTerminal::selection(int from, int to) {
    const std::optional<int> first = characterAtColumnOf(from);
    const std::optional<int> last = characterAtColumnOf(to);
    if (!first || !last || *first >= *last) {
        return std::nullopt;
    }
    return std::pair{*first, *last};
}

std::optional<Rect> AtSpiTerminal::bounds(int from, int to) {
    std::optional<Rect> result;
    for (int rows = 0; rows < rowsPerRange && from < to; ++rows) {
        const std::optional<Row> row = rowAt(from);
        if (!row) {
            break;
        }
        int cell = 0;
        for (qsizetype i = 0; i < row->characters.size(); ++i) {
            const int cells = cellsOf(row->characters.at(i));
            const int offset = row->from + static_cast<int>(i);
            if (offset >= from && offset < to && cells > 0) {
                const Rect drawn{row->firstCell.x + cell * row->firstCell.width, row->firstCell.y,
                                 cells * row->firstCell.width, row->firstCell.height};
                result = result ? result->united(drawn) : drawn;
            }
            cell += cells;
        }
        // The line break counts as a character of the row; rows without one go on at once.
        const int next = row->from + static_cast<int>(row->characters.size());
        from = next > from ? next : from + 1;
    }
    return result;
}

}  // namespace velmora
