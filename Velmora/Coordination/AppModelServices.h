// SPDX-License-Identifier: MIT
#pragma once

#include "Velmora/Coordination/HighlightPresenting.h"
#include "Velmora/Coordination/LaunchFlashPresenting.h"
#include "Velmora/Coordination/OnboardingPresenting.h"
#include "Velmora/Coordination/PopoverPresenting.h"
#include "Velmora/Coordination/SoftwareUpdating.h"
#include "Velmora/Coordination/Speaking.h"
#include "Velmora/Coordination/StatusBarPresenting.h"
#include "Velmora/Diagnostics/Analytics.h"
#include "Velmora/Diagnostics/LookupRecording.h"
#include "Velmora/Platform/ApplicationShell.h"
#include "Velmora/Platform/Clock.h"
#include "Velmora/Platform/EventMonitor.h"
#include "Velmora/Platform/MainQueue.h"
#include "Velmora/Platform/Pasteboard.h"
#include "Velmora/Platform/Screens.h"
#include "Velmora/Platform/Settings.h"
#include "Velmora/Platform/SystemPermissions.h"
#include "Velmora/TextCapture/TextExtracting.h"
#include "VelmoraCore/LookupEngine.h"

namespace velmora {

/// Everything that the model reaches the world through. Each outlives the model.
struct AppModelServices {
    // The platform.
    Settings& settings;
    Clock& clock;
    MainQueue& mainQueue;
    EventMonitor& events;
    Screens& screens;
    SystemPermissions& permissions;
    Pasteboard& pasteboard;
    ApplicationShell& shell;

    // What answers.
    TextExtracting& textExtractor;
    const LookupEngine& lookupEngine;

    // What shows and tells.
    PopoverPresenting& popover;
    HighlightPresenting& highlight;
    LaunchFlashPresenting& launchFlash;
    OnboardingPresenting& onboarding;
    StatusBarPresenting& statusBar;
    Speaking& speech;
    SoftwareUpdating& softwareUpdates;
    Analytics& analytics;
    LookupRecording& qaLog;
};

}  // namespace velmora
