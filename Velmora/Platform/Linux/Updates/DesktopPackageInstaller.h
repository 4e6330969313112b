// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>

#include "Velmora/Platform/PackageInstaller.h"

namespace velmora {

/// Hands packages to whatever the desktop opens them with.
class DesktopPackageInstaller final : public PackageInstaller {
  public:
    /// `executable` is the running program; `cacheFolder`, which belongs to us alone, where the
    /// newest package is kept for the installer. Its command is `xdg-open` unless another is given.
    DesktopPackageInstaller(std::string executable, std::string cacheFolder,
                            std::string openCommand = "xdg-open");

    /// Told by where the program lies: the system folders belong to package managers.
    bool isOwnedByPackageManager() const override;
    std::string install(const std::string& package, const std::string& fileName) override;

  private:
    std::string executable_;
    std::string cacheFolder_;
    std::string openCommand_;
    mutable std::optional<bool> isOwned_;
};

}  // namespace velmora
