// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string>

namespace velmora {

/// One release in an update feed.
struct AppcastItem {
    std::string version;       ///< What is compared.
    std::string shortVersion;  ///< What is shown; empty where the feed gives none.
    std::string releaseNotes;  ///< Plain text.
    std::string enclosureUrl;  ///< The package.
    std::int64_t length = 0;   ///< The package's size in bytes.
    std::string edSignature;   ///< Base64 Ed25519 signature of the package.

    /// The version as people read it.
    const std::string& displayVersion() const {
        return shortVersion.empty() ? version : shortVersion;
    }

    bool operator==(const AppcastItem&) const = default;
};

}  // namespace velmora
