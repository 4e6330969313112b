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
constexpr qsizetype greatestSelection = 4096;

bool isBreak(uint character) {
    return character == '\n' || character == '\r';
}

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

std::optional<int> AtSpiTerminal::characterAtColumnOf(const Row& row, int offset) const {
    const int column = offset - row.from;
    const auto count = static_cast<int>(row.characters.size());
    int cell = 0;
    int character = 0;
    for (; character < count && cell < column; ++character) {
        cell += cellsOf(row.characters.at(character));
    }
    // The last offset stands for its own column and for all behind it, if there are any.
    const bool isOpen = offset >= row.last && (character < count || cell > column);
    return isOpen ? std::nullopt : std::optional(row.from + character);
}

std::vector<int> AtSpiTerminal::charactersBehindColumnOf(const Row& row, int offset) const {
    std::vector<int> result;
    int cell = 0;
    for (qsizetype i = 0; i < row.characters.size(); ++i) {
        if (cell >= offset - row.from) {
            result.push_back(row.from + static_cast<int>(i));
        }
        cell += cellsOf(row.characters.at(i));
    }
    return result;
}

QList<uint> AtSpiTerminal::selectedCharacters() {
    const auto text = state_.selections
                          ? (*state_.selections)(state_.processId, deadline_.forNextCall())
                          : std::nullopt;
    QList<uint> characters = text ? QString::fromStdString(*text).toUcs4() : QList<uint>();
    characters.removeIf(isBreak);
    return characters.size() > greatestSelection ? QList<uint>() : characters;
}

std::optional<int> AtSpiTerminal::endOf(const QList<uint>& characters, int from) {
    // Rows that go on in the next one have a break for the terminal and none in what is selected.
    const int to = std::min(from + static_cast<int>(2 * characters.size()), state_.characterCount);
    const auto text =
        atspireply::text(bus_.callOnce(atspirequest::text(state_.object, from, to), deadline_),
                         rowLimit + 4 * characters.size());
    const QList<uint> shown = text ? text->toUcs4() : QList<uint>();
    qsizetype found = 0;
    for (qsizetype i = 0; i < shown.size() && found < characters.size(); ++i) {
        if (isBreak(shown.at(i))) {
            continue;
        }
        if (shown.at(i) != characters.at(found)) {
            return std::nullopt;
        }
        if (++found == characters.size()) {
            return from + static_cast<int>(i) + 1;
        }
    }
    return std::nullopt;
}

std::optional<std::pair<int, int>> AtSpiTerminal::selection(int from, int to) {
    const std::optional<Row> firstRow = rowAt(from);
    const std::optional<Row> lastRow = rowAt(to);
    if (!firstRow || !lastRow) {
        return std::nullopt;
    }
    const std::optional<int> first = characterAtColumnOf(*firstRow, from);
    const std::optional<int> last = characterAtColumnOf(*lastRow, to);
    if (first && last) {
        return *first < *last ? std::optional(std::pair{*first, *last}) : std::nullopt;
    }
    const QList<uint> characters = selectedCharacters();
    if (characters.isEmpty()) {
        return std::nullopt;
    }
    std::optional<std::pair<int, int>> result;
    for (const int begin :
         first ? std::vector{*first} : charactersBehindColumnOf(*firstRow, from)) {
        const std::optional<int> end = endOf(characters, begin);
        if (!end || (last && *end != *last)) {
            continue;
        }
        if (result) {
            return std::nullopt;
        }
        result = {begin, *end};
    }
    return result;
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
