// SPDX-License-Identifier: MIT
#include "Velmora/Platform/Linux/Updates/NetworkHttpFetcher.h"

#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QNetworkRequest>
#include <QPointer>
#include <QSslConfiguration>
#include <QTimer>
#include <utility>

namespace velmora {
namespace {

constexpr int mostRedirects = 5;
constexpr qint64 readBufferBytes = qint64{256} * 1024;
constexpr int httpNotModified = 304;
constexpr int httpOk = 200;

/// One transfer; the reply is ours to end.
class Transfer final : public QObject, public HttpFetch {
  public:
    Transfer(QNetworkReply* reply, const HttpFetcher::Request& request,
             HttpFetcher::Progress progress, HttpFetcher::Completion completion)
        : reply_(reply),
          mostBytes_(request.mostBytes),
          progress_(std::move(progress)),
          completion_(std::move(completion)) {
        reply_->setReadBufferSize(readBufferBytes);
        connect(reply_, &QNetworkReply::metaDataChanged, this, [this] { checkAnnouncedLength(); });
        connect(reply_, &QNetworkReply::readyRead, this, [this] { receive(); });
        connect(reply_, &QNetworkReply::finished, this, [this] { finish(); });
        // A server that sends a byte now and then is never idle.
        QTimer::singleShot(static_cast<int>(request.mostSeconds * 1000), this,
                           [this] { fail(QStringLiteral("it takes too long")); });
    }

    ~Transfer() override {
        if (reply_) {
            reply_->disconnect(this);
            reply_->abort();
            reply_->deleteLater();
        }
    }

  private:
    void checkAnnouncedLength() {
        const auto announced = reply_->header(QNetworkRequest::ContentLengthHeader);
        if (announced.isValid() && announced.toLongLong() > mostBytes_) {
            fail(QStringLiteral("it is larger than expected"));
        }
    }

    void receive() {
        if (!error_.empty()) {
            return;
        }
        const QByteArray arrived = reply_->readAll();
        if (static_cast<std::int64_t>(body_.size()) + arrived.size() > mostBytes_) {
            fail(QStringLiteral("it is larger than expected"));
            return;
        }
        body_.append(arrived.constData(), static_cast<std::size_t>(arrived.size()));
        progress_(static_cast<std::int64_t>(body_.size()));
    }

    void fail(const QString& reason) {
        if (!reply_) {
            return;
        }
        error_ = reason.toStdString();
        reply_->abort();
    }

    void finish() {
        if (error_.empty() && reply_->bytesAvailable() > 0) {
            receive();
        }
        HttpFetcher::Answer answer;
        const int status = reply_->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
        answer.entityTag = reply_->rawHeader("ETag").toStdString();
        if (!error_.empty()) {
            answer.error = error_;
        } else if (reply_->error() != QNetworkReply::NoError) {
            answer.error = reply_->errorString().simplified().toStdString();
        } else if (status == httpNotModified) {
            answer.notModified = true;
        } else if (status != httpOk) {
            answer.error = "the server answered " + std::to_string(status);
        } else {
            answer.body = std::move(body_);
        }
        reply_->deleteLater();
        reply_ = nullptr;
        // The completion may destroy this transfer.
        const auto completion = std::move(completion_);
        completion(std::move(answer));
    }

    QPointer<QNetworkReply> reply_;
    std::int64_t mostBytes_;
    HttpFetcher::Progress progress_;
    HttpFetcher::Completion completion_;
    std::string body_;
    std::string error_;
};

/// Answers on the next turn of the event loop that the address is refused.
class Refusal final : public QObject, public HttpFetch {
  public:
    explicit Refusal(HttpFetcher::Completion completion) {
        QTimer::singleShot(0, this, [completion = std::move(completion)] {
            // A copy: the completion may destroy this object and with it the closure.
            const auto call = completion;
            HttpFetcher::Answer answer;
            answer.error = "its address is not a secure one";
            call(std::move(answer));
        });
    }
};

}  // namespace

NetworkHttpFetcher::NetworkHttpFetcher(QList<QSslCertificate> authorities)
    : authorities_(std::move(authorities)) {}

NetworkHttpFetcher::~NetworkHttpFetcher() = default;

std::unique_ptr<HttpFetch> NetworkHttpFetcher::fetch(const Request& request, Progress progress,
                                                     Completion completion) {
    const QUrl url(QString::fromStdString(request.url), QUrl::StrictMode);
    if (!url.isValid() || url.scheme() != u"https" || url.host().isEmpty()) {
        return std::make_unique<Refusal>(std::move(completion));
    }
    if (!manager_) {
        manager_ = std::make_unique<QNetworkAccessManager>();
    }
    QNetworkRequest get(url);
    get.setAttribute(QNetworkRequest::RedirectPolicyAttribute,
                     QNetworkRequest::NoLessSafeRedirectPolicy);
    get.setMaximumRedirectsAllowed(mostRedirects);
    get.setTransferTimeout(static_cast<int>(request.idleTimeoutSeconds * 1000));
    if (!request.entityTag.empty()) {
        get.setRawHeader("If-None-Match", QByteArray::fromStdString(request.entityTag));
    }
    if (!authorities_.isEmpty()) {
        QSslConfiguration tls = QSslConfiguration::defaultConfiguration();
        tls.addCaCertificates(authorities_);
        get.setSslConfiguration(tls);
    }
    return std::make_unique<Transfer>(manager_->get(get), request, std::move(progress),
                                      std::move(completion));
}

}  // namespace velmora
