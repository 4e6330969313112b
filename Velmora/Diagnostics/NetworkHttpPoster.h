// SPDX-License-Identifier: MIT
#pragma once

#include <memory>

#include "Velmora/Platform/HttpPoster.h"

class QNetworkAccessManager;

namespace velmora {

/// Posts over the network stack's own threads. The network is first touched at the first post, so
/// a program without analytics pays nothing. At most 32 requests are under way; further ones are
/// dropped, as a network that swallows everything must not fill the memory.
class NetworkHttpPoster final : public HttpPoster {
  public:
    NetworkHttpPoster();
    ~NetworkHttpPoster() override;

    void postJson(const std::string& url, const std::string& body, double timeoutSeconds) override;

    /// The number of requests that have not ended yet.
    int underWay() const { return underWay_; }

  private:
    std::unique_ptr<QNetworkAccessManager> manager_;
    int underWay_ = 0;
};

}  // namespace velmora
