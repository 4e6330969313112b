// SPDX-License-Identifier: MIT
#pragma once

#include <optional>

#include "Velmora/TextCapture/RecognizedRegion.h"

namespace velmora {

/// Whether a recognised region is good enough to stop capturing.
class OCRRegionAcceptance {
  public:
    /// The region itself when the character under the pointer (capture space) was read with very
    /// high confidence and is not cut by the picture's edge. `lineFallbackRegion` is shared by all
    /// captures of one sequence: every region with something usable at the pointer replaces it.
    static std::optional<RecognizedRegion> acceptedOCRRegion(
        const RecognizedRegion& region, Point pointer,
        std::optional<RecognizedRegion>& lineFallbackRegion);
};

}  // namespace velmora
