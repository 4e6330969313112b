// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace velmora {

/// How this build finds its updates; chosen when it is packaged.
struct UpdateConfiguration {
    std::string feedUrl;    ///< https; empty: checks are off.
    std::string publicKey;  ///< Base64 Ed25519 key; empty: checks are off.
    std::string currentVersion;

    bool isComplete() const {
        return !feedUrl.empty() && !publicKey.empty() && !currentVersion.empty();
    }
};

}  // namespace velmora
