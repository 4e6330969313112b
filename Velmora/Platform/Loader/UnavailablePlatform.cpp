// SPDX-License-Identifier: MIT
#include "Velmora/Platform/Loader/UnavailablePlatform.h"

#include "Velmora/Platform/Linux/PlainApplicationShell.h"
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

PlatformBackends loadUnavailablePlatform(const std::string& reason) {
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

}  // namespace velmora
