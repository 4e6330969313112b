// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <functional>
#include <memory>

#include "Velmora/Platform/AccessibilitySystem.h"
#include "Velmora/Platform/ApplicationShell.h"
#include "Velmora/Platform/Compositor.h"
#include "Velmora/Platform/DesktopAppearance.h"
#include "Velmora/Platform/EventMonitor.h"
#include "Velmora/Platform/ScreenCapture.h"
#include "Velmora/Platform/ScreenGeometrySource.h"
#include "Velmora/Platform/Screens.h"
#include "Velmora/Platform/SystemPermissions.h"
#include "Velmora/Platform/TextRecognizer.h"
#include "Velmora/Platform/TextRectangleDetector.h"
#include "Velmora/Platform/WindowLocator.h"

namespace velmora {

class DictionaryStore;

/// The desktop as the rest of the program sees it. Every member is there; what this desktop cannot
/// give is of the unavailable kind.
struct PlatformBackends {
    std::shared_ptr<ScreenGeometrySource> screenGeometry;
    std::shared_ptr<Screens> screens;
    std::shared_ptr<EventMonitor> events;
    std::shared_ptr<WindowLocator> windows;
    std::shared_ptr<ScreenCapture> screenCapture;
    std::shared_ptr<Compositor> compositor;
    std::shared_ptr<DesktopAppearance> appearance;
    std::shared_ptr<ApplicationShell> shell;
    std::shared_ptr<AccessibilitySystem> accessibility;
    std::shared_ptr<SystemPermissions> permissions;
    std::shared_ptr<TextRecognizer> textRecognizer;
    std::shared_ptr<TextRectangleDetector> textRectangleDetector;

    /// Waits until it is known whether other programs' texts can be read; whether they can.
    std::function<bool(std::chrono::milliseconds)> waitForAccessibility =
        [](std::chrono::milliseconds) { return true; };
    /// Calls this, on any thread, each time that other programs' texts may have become readable
    /// because the bus to them is there: late after a login, or again.
    std::function<void(std::function<void()>)> observeAccessibility =
        [](const std::function<void()>&) {};
    /// Lets assistive programs read our own windows. Main thread, once, before the event loop.
    std::function<void()> announceOwnWindows = [] {};
    /// Begins to load the languages of recognition in the background, and the words of this
    /// dictionary, which may be null. Main thread, once.
    std::function<void(std::shared_ptr<const DictionaryStore>)> startRecognition =
        [](const std::shared_ptr<const DictionaryStore>&) {};
    /// Waits for the languages; whether something can be read.
    std::function<bool(std::chrono::milliseconds)> waitForRecognition =
        [](std::chrono::milliseconds) { return true; };
};

}  // namespace velmora
