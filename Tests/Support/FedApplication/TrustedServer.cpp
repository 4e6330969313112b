// SPDX-License-Identifier: MIT
// The server of a test has a certificate that nobody else trusts.
#include <QCoreApplication>
#include <QFile>
#include <QSslCertificate>
#include <QSslConfiguration>

namespace {

void trustTheTestServer() {
    QFile file(QStringLiteral(VELMORA_FIXTURES "/tls/server.pem"));
    file.open(QIODevice::ReadOnly);
    QSslConfiguration tls = QSslConfiguration::defaultConfiguration();
    tls.addCaCertificate(QSslCertificate(file.readAll()));
    QSslConfiguration::setDefaultConfiguration(tls);
}

}  // namespace

Q_COREAPP_STARTUP_FUNCTION(trustTheTestServer)
