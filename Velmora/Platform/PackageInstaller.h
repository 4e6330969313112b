// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace velmora {

/// What the desktop does with a downloaded package, and who owns our own files.
class PackageInstaller {
  public:
    virtual ~PackageInstaller() = default;

    /// Main thread. Whether a package manager owns the running program; such a copy never updates
    /// itself.
    virtual bool isOwnedByPackageManager() const = 0;

    /// Any thread. Stores the package under this file name and opens it with the desktop's
    /// installer. An empty answer is success, any other says in one line why it failed.
    virtual std::string install(const std::string& package, const std::string& fileName) = 0;
};

}  // namespace velmora
