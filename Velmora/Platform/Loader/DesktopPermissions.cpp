// SPDX-License-Identifier: MIT
#include "Velmora/Platform/Loader/DesktopPermissions.h"

#include <filesystem>
#include <system_error>
#include <utility>

namespace velmora {

namespace {

/// The page that tells what can be done about the grants: the installed one, else that of the
/// source tree.
std::string permissionsHelpPath() {
    constexpr const char* page = "permissions.html";
    std::error_code error;
    const auto executable = std::filesystem::read_symlink("/proc/self/exe", error);
    for (std::filesystem::path folder = executable.parent_path(); folder.has_relative_path();
         folder = folder.parent_path()) {
        const auto installed = folder / "share/doc/velmora" / page;
        if (std::filesystem::exists(installed, error)) {
            return installed.string();
        }
    }
    return (std::filesystem::path(VELMORA_SOURCE_DOCUMENTATION) / page).string();
}

}  // namespace

DesktopPermissions::DesktopPermissions(std::shared_ptr<AtSpiService> service,
                                       std::function<bool()> screenCapturePermitted)
    : accessibility_(std::move(service)),
      screenCapturePermitted_(std::move(screenCapturePermitted)) {}

bool DesktopPermissions::accessibilityTrusted() {
    return accessibility_.accessibilityTrusted();
}

bool DesktopPermissions::promptForAccessibility() {
    return accessibility_.promptForAccessibility();
}

bool DesktopPermissions::screenCapturePermitted() {
    return screenCapturePermitted_();
}

bool DesktopPermissions::requestScreenCapture() {
    // X11 has nobody to ask: the server can or cannot.
    return screenCapturePermitted_();
}

void DesktopPermissions::openPrivacyPane(const char* anchor) {
    AtSpiPermission::openPrivacyPane(anchor, permissionsHelpPath());
}

}  // namespace velmora
