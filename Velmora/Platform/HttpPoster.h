// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace velmora {

/// Sends small requests whose answers nobody waits for. Main thread; never blocks.
class HttpPoster {
  public:
    virtual ~HttpPoster() = default;

    /// Starts a POST of a JSON body to an absolute http or https address. The answer and every
    /// error are dropped; there is no retry. Gives up after `timeoutSeconds`.
    virtual void postJson(const std::string& url, const std::string& body,
                          double timeoutSeconds) = 0;
};

}  // namespace velmora
