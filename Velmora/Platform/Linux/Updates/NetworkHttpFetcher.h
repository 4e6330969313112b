// SPDX-License-Identifier: MIT
#pragma once

#include <QList>
#include <QSslCertificate>
#include <memory>

#include "Velmora/Platform/HttpFetcher.h"

class QNetworkAccessManager;

namespace velmora {

/// Fetches over TLS with the system's certificates. The network is first touched at the first
/// fetch.
class NetworkHttpFetcher final : public HttpFetcher {
  public:
    /// Further certificate authorities to trust beside the system's.
    explicit NetworkHttpFetcher(QList<QSslCertificate> authorities = {});
    ~NetworkHttpFetcher() override;

    std::unique_ptr<HttpFetch> fetch(const Request& request, Progress progress,
                                     Completion completion) override;

  private:
    QList<QSslCertificate> authorities_;
    std::unique_ptr<QNetworkAccessManager> manager_;
};

}  // namespace velmora
