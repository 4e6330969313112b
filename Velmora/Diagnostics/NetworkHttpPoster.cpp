// SPDX-License-Identifier: MIT
#include "Velmora/Diagnostics/NetworkHttpPoster.h"

#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QNetworkRequest>
#include <QUrl>

namespace velmora {
namespace {

constexpr int mostUnderWay = 32;
constexpr qint64 mostAnswerBytes = qint64{64} * 1024;

}  // namespace

NetworkHttpPoster::NetworkHttpPoster() = default;
NetworkHttpPoster::~NetworkHttpPoster() = default;

void NetworkHttpPoster::postJson(const std::string& url, const std::string& body,
                                 double timeoutSeconds) {
    if (underWay_ >= mostUnderWay) {
        return;
    }
    if (!manager_) {
        manager_ = std::make_unique<QNetworkAccessManager>();
    }
    QNetworkRequest request(QUrl(QString::fromStdString(url), QUrl::StrictMode));
    request.setHeader(QNetworkRequest::ContentTypeHeader, QByteArrayLiteral("application/json"));
    request.setTransferTimeout(static_cast<int>(timeoutSeconds * 1000));
    request.setAttribute(QNetworkRequest::CookieLoadControlAttribute, QNetworkRequest::Manual);
    request.setAttribute(QNetworkRequest::CookieSaveControlAttribute, QNetworkRequest::Manual);
    QNetworkReply* reply = manager_->post(request, QByteArray::fromStdString(body));
    ++underWay_;
    // The answer is not wanted; one without end is cut off instead of being kept in memory.
    reply->setReadBufferSize(mostAnswerBytes);
    QObject::connect(reply, &QNetworkReply::readyRead, reply, [reply, seen = qint64{0}]() mutable {
        seen += reply->readAll().size();
        if (seen > mostAnswerBytes) {
            reply->abort();
        }
    });
    QObject::connect(reply, &QNetworkReply::finished, reply, [this, reply] {
        --underWay_;
        reply->deleteLater();
    });
}

}  // namespace velmora
