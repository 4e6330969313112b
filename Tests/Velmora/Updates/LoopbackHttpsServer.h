// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QList>
#include <QSslCertificate>
#include <QSslServer>
#include <functional>

namespace velmora::test {

/// A real HTTPS server on the loopback address with a certificate of its own.
class LoopbackHttpsServer {
  public:
    /// Gives the raw answer to a request head.
    using Responder = std::function<QByteArray(const QByteArray& head)>;

    /// An answer that goes on for ever is made of the responder's bytes followed by filler.
    explicit LoopbackHttpsServer(Responder responder, bool endless = false);

    static QSslCertificate authority();
    std::string url(const std::string& path) const;
    const QList<QByteArray>& heads() const { return heads_; }
    /// How many connections have ended, whoever ended them.
    int ended() const { return ended_; }

    /// Ends the connection once the answer in hand is sent, whole or not.
    void hangUpAfterAnswer() { hangsUp_ = true; }

    /// Lets a byte now and then follow the answer in hand, without end.
    void trickleAfterAnswer() { trickles_ = true; }

    /// A whole answer with this body.
    static QByteArray ok(const QByteArray& body, const QByteArray& furtherHeaders = {});

  private:
    void accept();
    void send(QTcpSocket& socket, int milliseconds, qsizetype bytes);

    QSslServer server_;
    Responder responder_;
    bool endless_;
    bool hangsUp_ = false;
    bool trickles_ = false;
    int ended_ = 0;
    QList<QByteArray> heads_;
};

}  // namespace velmora::test
