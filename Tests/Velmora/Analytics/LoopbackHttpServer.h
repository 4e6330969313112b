// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QList>
#include <QMap>
#include <QTcpServer>

namespace velmora::test {

/// A real HTTP server on the loopback address that records what arrives and answers 200.
class LoopbackHttpServer {
  public:
    struct Request {
        QByteArray requestLine;
        QMap<QByteArray, QByteArray> headers;  ///< Names in lower case.
        QByteArray body;
    };

    /// How every request is answered.
    enum class Answer { ok, serverError, endless, silence };

    explicit LoopbackHttpServer(Answer answer = Answer::ok);

    QString address() const;
    const QList<Request>& requests() const { return requests_; }
    const QByteArray& everyByte() const { return everyByte_; }

    /// Runs the event loop until this many requests have arrived; false if they do not.
    bool waitForRequests(int count) const;

  private:
    void accept();
    void read(QTcpSocket* socket, QByteArray& buffer);
    void respond(QTcpSocket* socket) const;

    QTcpServer server_;
    Answer answer_;
    QList<Request> requests_;
    QByteArray everyByte_;
};

}  // namespace velmora::test
