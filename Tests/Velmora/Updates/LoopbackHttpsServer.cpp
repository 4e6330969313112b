// SPDX-License-Identifier: MIT
#include "Tests/Velmora/Updates/LoopbackHttpsServer.h"

#include <QFile>
#include <QSslConfiguration>
#include <QSslKey>
#include <QSslSocket>
#include <QTimer>
#include <memory>

namespace velmora::test {
namespace {

QByteArray fixture(const char* name) {
    QFile file(QStringLiteral(VELMORA_FIXTURES "/tls/") + QLatin1String(name));
    file.open(QIODevice::ReadOnly);
    return file.readAll();
}

}  // namespace

LoopbackHttpsServer::LoopbackHttpsServer(Responder responder, bool endless)
    : responder_(std::move(responder)), endless_(endless) {
    QSslConfiguration tls = QSslConfiguration::defaultConfiguration();
    tls.setLocalCertificate(authority());
    tls.setPrivateKey(QSslKey(fixture("server.key"), QSsl::Ec));
    server_.setSslConfiguration(tls);
    server_.listen(QHostAddress::LocalHost);
    QObject::connect(&server_, &QSslServer::pendingConnectionAvailable, &server_,
                     [this] { accept(); });
}

QSslCertificate LoopbackHttpsServer::authority() {
    return QSslCertificate(fixture("server.pem"));
}

std::string LoopbackHttpsServer::url(const std::string& path) const {
    return "https://127.0.0.1:" + std::to_string(server_.serverPort()) + path;
}

QByteArray LoopbackHttpsServer::ok(const QByteArray& body, const QByteArray& furtherHeaders) {
    return "HTTP/1.1 200 OK\r\nContent-Length: " + QByteArray::number(body.size()) + "\r\n" +
           furtherHeaders + "\r\n" + body;
}

void LoopbackHttpsServer::accept() {
    QTcpSocket* socket = server_.nextPendingConnection();
    const auto head = std::make_shared<QByteArray>();
    QObject::connect(socket, &QTcpSocket::disconnected, socket, &QObject::deleteLater);
    QObject::connect(socket, &QTcpSocket::disconnected, &server_, [this] { ++ended_; });
    QObject::connect(socket, &QTcpSocket::readyRead, socket, [this, socket, head] {
        *head += socket->readAll();
        if (!head->contains("\r\n\r\n")) {
            return;
        }
        heads_.append(*head);
        socket->write(responder_(*head));
        head->clear();
        if (hangsUp_) {
            socket->disconnectFromHost();
        }
        if (endless_) {
            send(*socket, 0, 64 * 1024);
        } else if (trickles_) {
            send(*socket, 20, 1);
        }
    });
}

/// So many bytes every few milliseconds, as long as somebody takes them.
void LoopbackHttpsServer::send(QTcpSocket& socket, int milliseconds, qsizetype bytes) {
    auto* filler = new QTimer(&socket);
    QObject::connect(filler, &QTimer::timeout, &socket, [&socket, bytes] {
        const auto* encrypted = qobject_cast<QSslSocket*>(&socket);
        if (encrypted->encryptedBytesToWrite() < 256 * 1024) {
            socket.write(QByteArray(bytes, 'x'));
        }
    });
    filler->start(milliseconds);
}

}  // namespace velmora::test
