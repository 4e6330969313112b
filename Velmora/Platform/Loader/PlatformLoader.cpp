// SPDX-License-Identifier: MIT
#include "Velmora/Platform/Loader/PlatformLoader.h"

#include <QByteArray>
#include <QtGlobal>

#include "Velmora/Platform/LinuxX11/X11Availability.h"
#include "Velmora/Platform/Loader/Recognition.h"
#include "Velmora/Platform/Loader/RecordedPlatform.h"
#include "Velmora/Platform/Loader/UnavailablePlatform.h"
#include "Velmora/Platform/Loader/X11Platform.h"
#include "Velmora/Platform/Recorded/RecordingFolder.h"

namespace velmora {

namespace {

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
            // Read twice, so that a folder without a recording is a clear line and no empty
            // desktop.
            const RecordingFolder::Loaded loaded = RecordingFolder::load(choice.recording);
            if (!loaded.recording) {
                return loaded.error;
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
            return loadX11Platform();
        case PlatformChoice::Kind::wayland:
            return loadUnavailablePlatform(
                "Wayland sessions are not supported yet; choose an X11 session");
        case PlatformChoice::Kind::recorded:
            return loadRecordedPlatform(choice.recording);
    }
    return loadUnavailablePlatform("unknown platform");
}

PlatformBackends loadRecognition() {
    PlatformBackends backends = loadUnavailablePlatform("not needed");
    addRecognition(backends);
    return backends;
}

}  // namespace velmora
