// SPDX-License-Identifier: MIT
#pragma once

#include <optional>

#include "Velmora/Platform/Linux/AtSpi/AtSpiBus.h"
#include "Velmora/Platform/Linux/AtSpi/AtSpiElementState.h"
#include "Velmora/Platform/Utf16Range.h"

namespace velmora {

/// Reads the text of one element in UTF-16 positions and capture space, whatever its toolkit counts
/// in. Lives as long as one job. Worker thread only.
class AtSpiTextReader {
  public:
    AtSpiTextReader(AtSpiBus& bus, AtSpiElementState& state, AtSpiDeadline& deadline)
        : bus_(bus), state_(state), deadline_(deadline) {}

    std::optional<QString> wholeText();
    std::optional<std::int64_t> longLength();
    std::optional<QString> string(Utf16Range range);

    /// The character whose drawn cell holds the point; nothing over empty space.
    std::optional<Utf16Range> rangeAt(Point capture);

    /// What the characters of the range cover together.
    std::optional<Rect> bounds(Utf16Range range);

    std::optional<Utf16Range> selectedRange();
    std::optional<QString> selectedText();

  private:
    bool learn();
    bool load(int around);
    std::optional<std::pair<int, int>> reportedSelection();
    std::optional<std::pair<int, int>> selectedOffsets();
    std::optional<std::pair<int, int>> webSelection(std::pair<int, int> reported);
    std::optional<int> offsetAt(Point capture);
    std::optional<std::pair<int, int>> offsets(Utf16Range range);

    AtSpiBus& bus_;
    AtSpiElementState& state_;
    AtSpiDeadline& deadline_;
};

}  // namespace velmora
