// SPDX-License-Identifier: MIT
#pragma once

#include <memory>

#include "Velmora/Platform/AccessibilitySystem.h"
#include "Velmora/Platform/Clock.h"
#include "Velmora/Platform/MainQueue.h"
#include "Velmora/Platform/ScreenCapture.h"
#include "Velmora/Platform/Screens.h"
#include "Velmora/Platform/SerialQueue.h"
#include "Velmora/Platform/TextRecognizer.h"
#include "Velmora/Platform/TextRectangleDetector.h"

namespace velmora {

/// What an extractor works with. All of them must be there.
struct ExtractionServices {
    std::shared_ptr<AccessibilitySystem> accessibility;
    std::shared_ptr<ScreenCapture> screenCapture;
    std::shared_ptr<TextRecognizer> textRecognizer;
    std::shared_ptr<TextRectangleDetector> textRectangleDetector;
    std::shared_ptr<const Screens> screens;
    std::shared_ptr<Clock> clock;

    /// The worker on which everything is read. Whoever makes it keeps a share of its own until the
    /// last extraction is over, so that it never ends on its own thread.
    std::shared_ptr<SerialQueue> queue;
    std::shared_ptr<MainQueue> mainQueue;

    static constexpr const char* queueLabel = "com.velmora.text-extraction";
};

}  // namespace velmora
