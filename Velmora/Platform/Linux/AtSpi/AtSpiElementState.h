// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <memory>
#include <optional>

#include "Velmora/Platform/Linux/AtSpi/AtSpiObject.h"
#include "Velmora/Platform/Linux/AtSpi/AtSpiSelectionSource.h"
#include "Velmora/Platform/Linux/AtSpi/AtSpiSpace.h"
#include "Velmora/Platform/Linux/AtSpi/AtSpiTextContent.h"

namespace velmora {

/// How far the cells that an element reports for its characters can be believed.
enum class AtSpiCells {
    unknown,
    right,
    shifted,  ///< All by the same distance.
    none,     ///< They say nothing.
};

/// What an element is and what was read of it so far. Filled on the worker thread only; what
/// stands before the empty line never changes and may be read anywhere.
struct AtSpiElementState {
    AtSpiObject object;
    AtSpiToolkit toolkit = AtSpiToolkit::other;
    AtSpiSpace space;
    int connectionNumber = 0;     ///< Of the bus on which the object has its name.
    std::int64_t processId = -1;  ///< Of the window that it was found in.
    std::shared_ptr<const AtSpiSelectionSource> selections;  ///< Null where there is none.

    bool isLearnt = false;
    std::uint32_t role = 0;
    int characterCount = -1;  ///< In the toolkit's own units; −1 where it shows no text.
    std::optional<AtSpiTextContent> content;
    AtSpiCells cells = AtSpiCells::unknown;
    Point cellShift;  ///< To be added to reported cells.
};

}  // namespace velmora
