// SPDX-License-Identifier: MIT
#pragma once

#include <memory>

#include "Velmora/Platform/ScreenGeometrySource.h"
#include "Velmora/TextCapture/ExtractionServices.h"

namespace velmora {

/// What the probe command works with.
struct ProbeServices {
    ExtractionServices extraction;
    std::shared_ptr<ScreenGeometrySource> screenGeometry;
    bool accessibilityGranted = true;  ///< Without it nothing can be read anywhere.
};

}  // namespace velmora
