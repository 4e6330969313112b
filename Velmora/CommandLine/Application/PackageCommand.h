// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include "Velmora/Platform/SystemInspection.h"

namespace velmora {

/// The packages that hold one part, by package manager; several are separated by blanks.
struct PackageNames {
    std::string apt;
    std::string dnf;
    std::string pacman;
};

/// The command that installs them with the package manager of this system; empty where it has none
/// of the known ones.
std::string installCommand(const SystemInspection& system, const PackageNames& packages);

/// The command that puts their files in place once more.
std::string reinstallCommand(const SystemInspection& system, const PackageNames& packages);

}  // namespace velmora
