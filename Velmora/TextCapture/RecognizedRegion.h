// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "Velmora/Platform/Image.h"
#include "Velmora/Platform/RecognizedText.h"
#include "Velmora/Platform/TextRecognizer.h"
#include "Velmora/TextCapture/RegionGeometry.h"

namespace velmora {

/// What was recognised in one picture of the screen. A plain value; cheap to copy.
struct RecognizedRegion : RegionGeometry {
    /// One reading of a line. Several readings of one line share its rectangle.
    struct Observation {
        RecognizedText::Pointer candidate;
        std::string text;      ///< The candidate's string.
        Rect rect;             ///< The whole line, in image pixels.
        std::size_t line = 0;  ///< The index in `lines` of the line that it is a reading of.
    };

    std::vector<Observation> observations;  ///< The readings that are trusted enough, in order.

    std::vector<TextObservation> lines;  ///< All that the recogniser answered.
    Image image;                         ///< The picture that was read.
};

}  // namespace velmora
