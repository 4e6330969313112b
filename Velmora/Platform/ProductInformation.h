// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <optional>
#include <string>

namespace velmora {

/// What the program knows of itself and of the system it runs on. A plain value.
struct ProductInformation {
    std::optional<std::string> shortVersion;      ///< "0.1.0"; absent in unversioned builds.
    std::optional<std::string> buildNumber;       ///< The packager's; usually absent.
    std::optional<std::string> bundleIdentifier;  ///< The reverse domain name of the program.
    std::string systemVersion;                    ///< The system's own name for its version.

    /// A value compiled in under this key; nothing where there is none.
    std::function<std::optional<std::string>(const std::string& key)> informationValue;

    /// A variable of the process environment; nothing where it is not set.
    std::function<std::optional<std::string>(const std::string& name)> environmentValue;
};

}  // namespace velmora
