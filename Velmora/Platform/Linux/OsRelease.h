// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace velmora {

/// The system's name and version for people, such as "Debian GNU/Linux 12 (bookworm)".

/// From the text of an os-release file: its PRETTY_NAME, or an empty text.
std::string prettyNameFromOsRelease(std::string_view text);

/// From the first of these files that has one; "Linux" where none has.
std::string operatingSystemVersion(const std::vector<std::filesystem::path>& files = {
                                       "/etc/os-release", "/usr/lib/os-release"});

}  // namespace velmora
