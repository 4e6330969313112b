// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace velmora {

/// How this build finds its updates; chosen when it is packaged.
struct UpdateConfiguration {
    std::string feedUrl;         ///< https; empty: checks are off.
    std::string publicKey;       ///< Base64 Ed25519 key; empty: checks are off.
    std::string currentVersion;  ///< As people read it.

    /// What the versions of the feed are compared with where the packager counts builds; empty: the
    /// version that people read.
    std::string buildNumber = {};

    const std::string& comparedVersion() const {
        return buildNumber.empty() ? currentVersion : buildNumber;
    }

    bool isComplete() const {
        return !feedUrl.empty() && !publicKey.empty() && !currentVersion.empty();
    }
};

}  // namespace velmora
