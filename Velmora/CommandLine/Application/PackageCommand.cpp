// SPDX-License-Identifier: MIT
#include "Velmora/CommandLine/Application/PackageCommand.h"

namespace velmora {

std::string installCommand(const SystemInspection& system, const PackageNames& packages) {
    if (system.canRead("/usr/bin/apt-get")) {
        return "sudo apt-get install " + packages.apt;
    }
    if (system.canRead("/usr/bin/dnf")) {
        return "sudo dnf install " + packages.dnf;
    }
    if (system.canRead("/usr/bin/pacman")) {
        return "sudo pacman -S " + packages.pacman;
    }
    return {};
}

std::string reinstallCommand(const SystemInspection& system, const PackageNames& packages) {
    if (system.canRead("/usr/bin/apt-get")) {
        return "sudo apt-get install --reinstall " + packages.apt;
    }
    if (system.canRead("/usr/bin/dnf")) {
        return "sudo dnf reinstall " + packages.dnf;
    }
    return installCommand(system, packages);
}

}  // namespace velmora
