// SPDX-License-Identifier: MIT
#include "Velmora/Platform/Loader/X11Platform.h"

#include <utility>

#include "Velmora/Platform/Linux/AtSpi/AtSpiService.h"
#include "Velmora/Platform/Linux/AtSpi/AtSpiSystem.h"
#include "Velmora/Platform/Linux/AtSpi/OwnWindowsBridge.h"
#include "Velmora/Platform/Linux/PortalAppearance.h"
#include "Velmora/Platform/LinuxX11/X11ApplicationShell.h"
#include "Velmora/Platform/LinuxX11/X11ClientRange.h"
#include "Velmora/Platform/LinuxX11/X11Compositor.h"
#include "Velmora/Platform/LinuxX11/X11EventMonitor.h"
#include "Velmora/Platform/LinuxX11/X11PrimarySelection.h"
#include "Velmora/Platform/LinuxX11/X11ScreenCapture.h"
#include "Velmora/Platform/LinuxX11/X11Screens.h"
#include "Velmora/Platform/LinuxX11/X11WindowLocator.h"
#include "Velmora/Platform/Loader/DesktopPermissions.h"
#include "Velmora/Platform/Loader/Recognition.h"
#include "Velmora/Platform/Loader/UnavailablePlatform.h"

namespace velmora {

PlatformBackends loadX11Platform() {
    PlatformBackends backends = loadUnavailablePlatform("not built into this program");
    const X11ClientRange ourWindows = X11ClientRange::ofApplication();
    const auto screens = std::make_shared<X11Screens>();
    backends.screens = screens;
    backends.screenGeometry = screens;
    backends.events = std::make_shared<X11EventMonitor>(*screens, ourWindows);
    backends.windows = std::make_shared<X11WindowLocator>(ourWindows);
    backends.screenCapture = std::make_shared<X11ScreenCapture>(*screens, ourWindows);
    backends.shell = std::make_shared<X11ApplicationShell>();
    backends.compositor = std::make_shared<X11Compositor>();
    backends.appearance = std::make_shared<PortalAppearance>();
    const auto accessibilityBus = std::make_shared<AtSpiService>();
    const auto selection = std::make_shared<X11PrimarySelection>();
    backends.accessibility = std::make_shared<AtSpiSystem>(
        accessibilityBus, *backends.windows, *screens,
        [selection](std::int64_t processId, std::chrono::milliseconds patience) {
            return selection->textOf(processId, patience);
        });
    backends.permissions = std::make_shared<DesktopPermissions>(
        accessibilityBus, [possible = X11ScreenCapture::isPossible()] { return possible; });
    backends.waitForAccessibility = [accessibilityBus](std::chrono::milliseconds patience) {
        accessibilityBus->awaitConnection(patience);
        return accessibilityBus->grant().isGiven();
    };
    backends.observeAccessibility = [accessibilityBus](std::function<void()> observer) {
        accessibilityBus->observeConnections(std::move(observer));
    };
    backends.announceOwnWindows = [accessibilityBus] { makeOwnWindowsBridge(*accessibilityBus); };
    addRecognition(backends);
    return backends;
}

}  // namespace velmora
