// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QProcess>
#include <QStringList>

namespace velmora::testing {

/// A bus daemon of this process, in place of the user's for all that follows.
class PrivateBus {
  public:
    PrivateBus() {
        daemon_.setStandardErrorFile(QProcess::nullDevice());
        daemon_.start(QStringLiteral("dbus-daemon"),
                      {QStringLiteral("--session"), QStringLiteral("--nofork"),
                       QStringLiteral("--print-address")});
        daemon_.waitForStarted();
        while (!daemon_.canReadLine() && daemon_.waitForReadyRead(20000)) {
        }
        qputenv("DBUS_SESSION_BUS_ADDRESS", daemon_.readLine().trimmed());
    }
    ~PrivateBus() {
        daemon_.kill();
        daemon_.waitForFinished();
    }

  private:
    QProcess daemon_;
};

}  // namespace velmora::testing
