// SPDX-License-Identifier: MIT
#include "Velmora/Platform/Loader/DesktopInspection.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <future>
#include <thread>
#include <utility>

#include "Velmora/Platform/Linux/BusInspection.h"
#include "Velmora/Platform/LinuxX11/Tray/TrayIconWindow.h"
#include "Velmora/Platform/LinuxX11/X11Availability.h"
#include "Velmora/Platform/LinuxX11/X11Compositor.h"
#include "Velmora/Platform/LinuxX11/X11ScreenCapture.h"
#include "Velmora/Platform/Loader/PlatformChoice.h"
#include "Velmora/Platform/Loader/PlatformLoader.h"
#include "VelmoraCore/BundledDictionary.h"

namespace velmora {

bool DesktopInspection::answered(bool& stuck, std::function<bool()> question) {
    if (stuck) {
        return false;
    }
    auto answer = std::make_shared<std::promise<bool>>();
    auto future = answer->get_future();
    std::thread([answer, asked = std::move(question)] { answer->set_value(asked()); }).detach();
    stuck = future.wait_for(patience) != std::future_status::ready;
    return !stuck && future.get();
}

std::optional<std::string> DesktopInspection::displayProblem() const {
    const auto choice = PlatformChoice::fromEnvironment();
    if (!choice) {
        return PlatformChoice::wrongVariable;
    }
    if (choice->kind == PlatformChoice::Kind::wayland) {
        return "Wayland sessions are not supported yet";
    }
    if (choice->kind == PlatformChoice::Kind::recorded) {
        return "a recording is played back in place of a display";
    }
    const auto display = environmentValue("DISPLAY");
    if (!display || display->empty()) {
        return "DISPLAY is not set";
    }
    if (!answered(displayStuck_, [] { return isX11ServerReachable(); })) {
        return "no X server answers on display " + *display;
    }
    return std::nullopt;
}

bool DesktopInspection::canCaptureScreen() const {
    return answered(displayStuck_, [] { return X11ScreenCapture::isPossible(); });
}

bool DesktopInspection::hasCompositor() const {
    return !displayStuck_ && X11Compositor().isCompositing();
}

bool DesktopInspection::hasSessionBus() const {
    return answered(busStuck_, businspection::hasSessionBus);
}

bool DesktopInspection::hasAccessibilityBus() const {
    return answered(busStuck_, businspection::hasAccessibilityBus);
}

bool DesktopInspection::isAccessibilityEnabled() const {
    return answered(busStuck_, businspection::isAccessibilityEnabled);
}

bool DesktopInspection::hasTrayHost() const {
    return answered(busStuck_, businspection::hasTrayHost) ||
           answered(displayStuck_, [] { return TrayIconWindow::isTrayThere(); });
}

std::optional<std::string> DesktopInspection::dictionaryProblem() const {
    const auto error = BundledDictionary::error();
    return error ? std::optional<std::string>(description(*error)) : std::nullopt;
}

std::string DesktopInspection::dictionaryPath() const {
    return BundledDictionary::wordListPath();
}

RecognitionStatus DesktopInspection::recognition() const {
    const PlatformBackends backends = loadRecognition();
    backends.startRecognition(nullptr);
    backends.waitForRecognition(loadingPatience);
    return backends.textRecognizer->status();
}

std::optional<std::string> DesktopInspection::environmentValue(const std::string& name) const {
    const char* const value = std::getenv(name.c_str());
    return value != nullptr ? std::optional<std::string>(value) : std::nullopt;
}

bool DesktopInspection::canRead(const std::string& path) const {
    std::error_code error;
    if (std::filesystem::is_directory(path, error)) {
        return true;
    }
    return std::filesystem::is_regular_file(path, error) && std::ifstream(path).is_open();
}

std::vector<std::string> DesktopInspection::namesIn(const std::string& folder) const {
    constexpr std::size_t limit = 500;
    std::vector<std::string> names;
    std::error_code error;
    for (std::filesystem::directory_iterator entry(folder, error), end;
         !error && entry != end && names.size() < limit; entry.increment(error)) {
        names.push_back(entry->path().filename().string());
    }
    return names;
}

}  // namespace velmora
