// SPDX-License-Identifier: MIT
#include "Velmora/CommandLine/Application/ProbeRecording.h"

#include "Velmora/CommandLine/Core/TextLayout.h"
#include "Velmora/CommandLine/Core/UsageError.h"
#include "Velmora/Platform/Recorded/RecordingAccessibility.h"
#include "Velmora/Platform/Recorded/RecordingFolder.h"
#include "Velmora/Platform/Recorded/RecordingScreenCapture.h"
#include "Velmora/Platform/Recorded/RecordingTextRecognizer.h"
#include "Velmora/Platform/Recorded/RecordingTextRectangleDetector.h"

namespace velmora {

ProbeRecording::ProbeRecording(ExtractionServices& services, Point nativePoint,
                               const ScreenGeometry& geometry) {
    services.accessibility =
        std::make_shared<RecordingAccessibility>(services.accessibility, recorder_);
    services.screenCapture =
        std::make_shared<RecordingScreenCapture>(services.screenCapture, recorder_);
    services.textRecognizer =
        std::make_shared<RecordingTextRecognizer>(services.textRecognizer, recorder_);
    services.textRectangleDetector =
        std::make_shared<RecordingTextRectangleDetector>(services.textRectangleDetector, recorder_);
    recorder_->change([&](Recording& recording) {
        recording.pointer = nativePoint;
        recording.screens = geometry.layouts();
        recording.displays = geometry.displays();
    });
}

void ProbeRecording::save(const std::string& folder, const std::optional<TextProbe>& probe,
                          const LookupEngine& engine) {
    if (probe && probe->rangeAnchorRect) {
        if (const auto match = engine.lookup(probe->text, probe->hoveredCharacterOffset)) {
            probe->rangeAnchorRect(match->range.start, match->range.end);
        }
    }
    if (const auto failure = RecordingFolder::save(recorder_->recording(), folder)) {
        throw UsageError(printable(*failure));
    }
}

}  // namespace velmora
