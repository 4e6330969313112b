// SPDX-License-Identifier: MIT
#include "Velmora/Platform/Loader/PlatformLoader.h"

#include <QByteArray>
#include <QtGlobal>

#include "Velmora/Platform/Linux/PlainApplicationShell.h"
#include "Velmora/Platform/Linux/PortalAppearance.h"
#include "Velmora/Platform/LinuxX11/X11Availability.h"
#include "Velmora/Platform/Unavailable/UnavailableAccessibilitySystem.h"
#include "Velmora/Platform/Unavailable/UnavailableCompositor.h"
#include "Velmora/Platform/Unavailable/UnavailableDesktopAppearance.h"
#include "Velmora/Platform/Unavailable/UnavailableEventMonitor.h"
#include "Velmora/Platform/Unavailable/UnavailableScreenCapture.h"
#include "Velmora/Platform/Unavailable/UnavailableScreenGeometrySource.h"
#include "Velmora/Platform/Unavailable/UnavailableScreens.h"
#include "Velmora/Platform/Unavailable/UnavailableSystemPermissions.h"
#include "Velmora/Platform/Unavailable/UnavailableTextRecognizer.h"
#include "Velmora/Platform/Unavailable/UnavailableTextRectangleDetector.h"
#include "Velmora/Platform/Unavailable/UnavailableWindowLocator.h"

namespace velmora {

namespace {

PlatformBackends unavailable(const std::string& reason) {
    return {
        .screenGeometry = std::make_shared<UnavailableScreenGeometrySource>(reason),
        .screens = std::make_shared<UnavailableScreens>(reason),
        .events = std::make_shared<UnavailableEventMonitor>(reason),
        .windows = std::make_shared<UnavailableWindowLocator>(reason),
        .screenCapture = std::make_shared<UnavailableScreenCapture>(reason),
        .compositor = std::make_shared<UnavailableCompositor>(reason),
        .appearance = std::make_shared<UnavailableDesktopAppearance>(reason),
        .shell = std::make_shared<PlainApplicationShell>(),
        .accessibility = std::make_shared<UnavailableAccessibilitySystem>(reason),
        .permissions = std::make_shared<UnavailableSystemPermissions>(reason),
        .textRecognizer = std::make_shared<UnavailableTextRecognizer>(reason),
        .textRectangleDetector = std::make_shared<UnavailableTextRectangleDetector>(reason),
    };
}

PlatformBackends loadX11() {
    PlatformBackends backends = unavailable("not built into this program");
    backends.appearance = std::make_shared<PortalAppearance>();
    return backends;
}

void useToolkitPlatform(const char* name) {
    // Whoever sets the variable knows better, the tests for one.
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) {
        qputenv("QT_QPA_PLATFORM", name);
    }
}

}  // namespace

std::optional<std::string> preparePlatform(const PlatformChoice& choice) {
    switch (choice.kind) {
        case PlatformChoice::Kind::x11:
            // The toolkit would end the program in the middle of its start.
            if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM") && !isX11ServerReachable()) {
                const QByteArray display = qgetenv("DISPLAY");
                return display.isEmpty()
                           ? "no display: DISPLAY is not set"
                           : "no X server answers on display " + display.toStdString();
            }
            useToolkitPlatform("xcb");
            break;
        case PlatformChoice::Kind::wayland:
            useToolkitPlatform("wayland;xcb;offscreen");
            break;
        case PlatformChoice::Kind::recorded: {
            std::error_code error;
            if (!std::filesystem::is_directory(choice.recording, error)) {
                return "no recording in " + choice.recording.string();
            }
            useToolkitPlatform("offscreen");
            break;
        }
    }
    return std::nullopt;
}

PlatformBackends loadPlatform(const PlatformChoice& choice) {
    switch (choice.kind) {
        case PlatformChoice::Kind::x11:
            return loadX11();
        case PlatformChoice::Kind::wayland:
            return unavailable("Wayland sessions are not supported yet; choose an X11 session");
        case PlatformChoice::Kind::recorded:
            return unavailable("recordings are not played back yet");
    }
    return unavailable("unknown platform");
}

}  // namespace velmora
