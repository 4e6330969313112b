// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <optional>
#include <string>

#include "Velmora/Platform/Recorded/Recorder.h"
#include "Velmora/Platform/ScreenGeometry.h"
#include "Velmora/TextCapture/ExtractionServices.h"
#include "Velmora/TextCapture/TextProbe.h"
#include "VelmoraCore/LookupEngine.h"

namespace velmora {

/// The recording of one probe.
class ProbeRecording {
  public:
    /// From now on the services are recorded.
    ProbeRecording(ExtractionServices& services, Point nativePoint, const ScreenGeometry& geometry);

    /// Asks for the bounds of the word as well, as the running program would, and writes all to a
    /// folder; throws `UsageError` where that fails.
    void save(const std::string& folder, const std::optional<TextProbe>& probe,
              const LookupEngine& engine);

  private:
    std::shared_ptr<Recorder> recorder_ = std::make_shared<Recorder>();
};

}  // namespace velmora
