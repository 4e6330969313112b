// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <vector>

#include "Velmora/TextCapture/ExtractionPath.h"
#include "Velmora/TextCapture/RecognizedRegion.h"
#include "Velmora/TextCapture/TextProbe.h"
#include "VelmoraCore/LookupResult.h"

namespace velmora {

/// What was recognised in a picture.
struct Recognition {
    RegionGeometry geometry;  ///< How the lines lie in the picture.
    std::vector<TextObservation> lines;

    // Where a point was asked about; the anchor in pixels of the picture.
    std::optional<TextProbe> probe;
    std::optional<Rect> anchor;
    std::optional<ExtractionPath> path;
    std::optional<LookupResult> match;
};

}  // namespace velmora
