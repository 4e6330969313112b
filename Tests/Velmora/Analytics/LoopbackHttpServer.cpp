// SPDX-License-Identifier: MIT
#include "Tests/Velmora/Analytics/LoopbackHttpServer.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QTcpSocket>
#include <memory>

namespace velmora::test {

LoopbackHttpServer::LoopbackHttpServer(Answer answer) : answer_(answer) {
    server_.listen(QHostAddress::LocalHost);
    QObject::connect(&server_, &QTcpServer::newConnection, &server_, [this] { accept(); });
}

QString LoopbackHttpServer::address() const {
    return QStringLiteral("http://127.0.0.1:%1").arg(server_.serverPort());
}

bool LoopbackHttpServer::waitForRequests(int count) const {
    const QDeadlineTimer deadline(20'000);
    while (requests_.size() < count && !deadline.hasExpired()) {
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 100);
    }
    return requests_.size() >= count;
}

void LoopbackHttpServer::accept() {
    QTcpSocket* socket = server_.nextPendingConnection();
    const auto buffer = std::make_shared<QByteArray>();
    QObject::connect(socket, &QTcpSocket::disconnected, socket, &QObject::deleteLater);
    QObject::connect(socket, &QTcpSocket::readyRead, socket,
                     [this, socket, buffer] { read(socket, *buffer); });
}

void LoopbackHttpServer::read(QTcpSocket* socket, QByteArray& buffer) {
    const QByteArray arrived = socket->readAll();
    everyByte_ += arrived;
    buffer += arrived;
    for (;;) {
        const qsizetype headEnd = buffer.indexOf("\r\n\r\n");
        if (headEnd < 0) {
            return;
        }
        Request request;
        const QList<QByteArray> lines = buffer.left(headEnd).split('\n');
        request.requestLine = lines.value(0).trimmed();
        for (const QByteArray& line : lines.mid(1)) {
            const qsizetype colon = line.indexOf(':');
            request.headers[line.left(colon).toLower()] = line.mid(colon + 1).trimmed();
        }
        const qsizetype length = request.headers.value("content-length").toLongLong();
        if (buffer.size() < headEnd + 4 + length) {
            return;
        }
        request.body = buffer.mid(headEnd + 4, length);
        buffer.remove(0, headEnd + 4 + length);
        requests_.append(request);
        respond(socket);
    }
}

void LoopbackHttpServer::respond(QTcpSocket* socket) const {
    switch (answer_) {
        case Answer::ok:
            socket->write("HTTP/1.1 200 OK\r\nContent-Length: 2\r\n\r\n{}");
            return;
        case Answer::serverError:
            socket->write("HTTP/1.1 500 No\r\nContent-Length: 0\r\n\r\n");
            return;
        case Answer::endless:
            socket->write("HTTP/1.1 200 OK\r\n\r\n");
            QObject::connect(socket, &QTcpSocket::bytesWritten, socket,
                             [socket] { socket->write(QByteArray(64 * 1024, 'x')); });
            return;
        case Answer::silence:
            return;
    }
}

}  // namespace velmora::test
