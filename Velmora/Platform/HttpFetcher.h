// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>

namespace velmora {

/// A request under way; destroying it cancels it without a call.
class HttpFetch {
  public:
    virtual ~HttpFetch() = default;
};

/// Fetches files from the web. Main thread; never blocks; callbacks come on the main thread.
class HttpFetcher {
  public:
    struct Request {
        std::string url;             ///< Absolute; anything but https is refused.
        std::string entityTag;       ///< Sent as If-None-Match where it is not empty.
        std::int64_t mostBytes = 0;  ///< A longer answer is cut off and counts as failed.
        double idleTimeoutSeconds = 30;
        double mostSeconds = 120;  ///< An answer that is not whole by then counts as failed.
    };

    struct Answer {
        /// Why there is no body; empty for success and for `notModified`.
        std::string error;
        bool notModified = false;
        std::string entityTag;
        std::string body;
    };

    using Progress = std::function<void(std::int64_t received)>;
    using Completion = std::function<void(Answer)>;

    virtual ~HttpFetcher() = default;

    /// Follows redirects, but never from https to anything else.
    virtual std::unique_ptr<HttpFetch> fetch(const Request& request, Progress progress,
                                             Completion completion) = 0;
};

}  // namespace velmora
