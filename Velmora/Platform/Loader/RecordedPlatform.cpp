// SPDX-License-Identifier: MIT
#include "Velmora/Platform/Loader/RecordedPlatform.h"

#include "Velmora/Platform/Loader/UnavailablePlatform.h"
#include "Velmora/Platform/Recorded/RecordedAccessibility.h"
#include "Velmora/Platform/Recorded/RecordedScreenCapture.h"
#include "Velmora/Platform/Recorded/RecordedScreens.h"
#include "Velmora/Platform/Recorded/RecordedTextRecognizer.h"
#include "Velmora/Platform/Recorded/RecordedTextRectangleDetector.h"
#include "Velmora/Platform/Recorded/RecordingFolder.h"

namespace velmora {

PlatformBackends loadRecordedPlatform(const std::filesystem::path& folder) {
    const RecordingFolder::Loaded loaded = RecordingFolder::load(folder);
    if (!loaded.recording) {
        return loadUnavailablePlatform(loaded.error);
    }
    PlatformBackends backends = loadUnavailablePlatform("not part of a recording");
    const auto screens = std::make_shared<RecordedScreens>(*loaded.recording);
    backends.screens = screens;
    backends.screenGeometry = screens;
    backends.accessibility = std::make_shared<RecordedAccessibility>(loaded.recording);
    backends.screenCapture = std::make_shared<RecordedScreenCapture>(loaded.recording);
    backends.textRecognizer = std::make_shared<RecordedTextRecognizer>(loaded.recording);
    backends.textRectangleDetector =
        std::make_shared<RecordedTextRectangleDetector>(loaded.recording);
    return backends;
}

}  // namespace velmora
