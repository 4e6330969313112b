// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <utility>
#include <vector>

#include "Velmora/Platform/Linux/AtSpi/AtSpiBus.h"
#include "Velmora/Platform/Linux/AtSpi/AtSpiElementState.h"
#include "Velmora/Platform/Linux/AtSpi/AtSpiReply.h"

namespace velmora {

/// Where the characters of a terminal stand. Terminals place as if every character had one cell;
/// what they draw has two for wide characters and none for combining ones, so that the columns are
/// counted here. Worker thread only.
class AtSpiTerminal {
  public:
    AtSpiTerminal(AtSpiBus& bus, const AtSpiElementState& state, AtSpiDeadline& deadline)
        : bus_(bus), state_(state), deadline_(deadline) {}

    std::optional<int> offsetAt(Point capture);
    std::optional<Rect> bounds(int from, int to);

    /// The characters of a selection of which the terminal told. It counts columns in place of
    /// characters there, from the beginning of the row, and stops counting at the row's last
    /// character. Where that leaves open what is meant, because the selection begins or ends behind
    /// the middle of a row of wide characters, the selected text itself is asked for, and nothing
    /// is the answer where it stands nowhere or in two places.
    std::optional<std::pair<int, int>> selection(int from, int to);

    /// How many cells a terminal gives a character: 0, 1 or 2.
    static int cellsOf(char32_t character);

  private:
    /// One row of the screen: its text by characters and its first cell.
    struct Row {
        QList<uint> characters;
        int from = 0;
        int last = 0;  ///< The line break's offset, if there is one.
        Rect firstCell;
    };
    std::optional<Row> rowAt(int offset);
    std::optional<int> characterAtColumnOf(const Row& row, int offset) const;
    std::vector<int> charactersBehindColumnOf(const Row& row, int offset) const;
    QList<uint> selectedCharacters();
    std::optional<int> endOf(const QList<uint>& characters, int from);

    AtSpiBus& bus_;
    const AtSpiElementState& state_;
    AtSpiDeadline& deadline_;
};

}  // namespace velmora
