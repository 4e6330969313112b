// SPDX-License-Identifier: MIT
#include "Velmora/Platform/Linux/BusHandshake.h"

#include <gtest/gtest.h>
#include <signal.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QProcess>
#include <cstring>
#include <string>

#include "Tests/Support/TemporaryFolder.h"

namespace velmora {
namespace {

constexpr std::chrono::milliseconds longTime{60000};
constexpr std::chrono::milliseconds shortTime{50};

/// A bus daemon of its own at this place.
class Daemon {
  public:
    explicit Daemon(const std::string& address) {
        process_.setStandardErrorFile(QProcess::nullDevice());
        process_.start(QStringLiteral("dbus-daemon"),
                       {QStringLiteral("--session"), QStringLiteral("--nofork"),
                        QStringLiteral("--print-address"),
                        QStringLiteral("--address=%1").arg(QString::fromStdString(address))});
        while (!process_.canReadLine() && process_.waitForReadyRead(60000)) {
        }
        address_ = process_.readLine().trimmed().toStdString();
    }
    ~Daemon() {
        process_.kill();
        process_.waitForFinished();
    }
    Daemon(const Daemon&) = delete;
    Daemon& operator=(const Daemon&) = delete;

    const std::string& address() const { return address_; }
    pid_t pid() const { return static_cast<pid_t>(process_.processId()); }

  private:
    QProcess process_;
    std::string address_;
};

TEST(BusHandshakeTest, aDaemonAnswersAndAStoppedOneIsSilent) {
    const testing::TemporaryFolder folder;
    const Daemon daemon("unix:path=" + (folder.path() / "a%20bus").string());
    ASSERT_NE(daemon.address().find("%20"), std::string::npos) << daemon.address();
    EXPECT_EQ(shakeHandsWithBus(daemon.address(), longTime), BusHandshake::answered);
    ASSERT_EQ(::kill(daemon.pid(), SIGSTOP), 0);
    EXPECT_EQ(shakeHandsWithBus(daemon.address(), shortTime), BusHandshake::silent);
    ASSERT_EQ(::kill(daemon.pid(), SIGCONT), 0);
    EXPECT_EQ(shakeHandsWithBus(daemon.address(), longTime), BusHandshake::answered);
}

TEST(BusHandshakeTest, knowsNamesThatAreInNoFolder) {
    const Daemon daemon("unix:abstract=velmora-handshake-" + std::to_string(::getpid()));
    ASSERT_NE(daemon.address().find("abstract="), std::string::npos);
    EXPECT_EQ(shakeHandsWithBus(daemon.address(), longTime), BusHandshake::answered);
    ASSERT_EQ(::kill(daemon.pid(), SIGSTOP), 0);
    EXPECT_EQ(shakeHandsWithBus(daemon.address(), shortTime), BusHandshake::silent);
}

TEST(BusHandshakeTest, nobodyIsRefused) {
    EXPECT_EQ(shakeHandsWithBus("unix:path=/nonexistent/bus", longTime), BusHandshake::refused);
    EXPECT_EQ(shakeHandsWithBus("unix:abstract=velmora-nobody", longTime), BusHandshake::refused);
    EXPECT_EQ(shakeHandsWithBus("unix:guid=0,path=/nonexistent/b%zzus%2", longTime),
              BusHandshake::refused);
}

TEST(BusHandshakeTest, otherKindsOfAddressesAreNotLookedAt) {
    for (const std::string& address :
         {std::string(), std::string("tcp:host=localhost,port=1"), std::string("unix:"),
          std::string("unix:tmpdir=/nonexistent"), std::string("unixexec:path=/bin/true"),
          "unix:path=/" + std::string(200, 'x')}) {
        EXPECT_EQ(shakeHandsWithBus(address, longTime), BusHandshake::answered) << address;
    }
}

TEST(BusHandshakeTest, oneWhoClosesTheDoorIsNoBusAndAFullHallwayIsSilent) {
    const testing::TemporaryFolder folder;
    const std::string path = (folder.path() / "door").string();
    const int listener = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    ASSERT_LT(path.size(), sizeof address.sun_path);
    std::memcpy(address.sun_path, path.data(), path.size());
    ASSERT_EQ(::bind(listener, reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
    ASSERT_EQ(::listen(listener, 0), 0);
    // Nobody takes the first one in, who then stands where the second would.
    const int first = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    ASSERT_EQ(::connect(first, reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
    EXPECT_EQ(shakeHandsWithBus("unix:path=" + path, shortTime), BusHandshake::silent);
    ::close(first);
    ::close(::accept(listener, nullptr, nullptr));
    const pid_t doorkeeper = ::fork();
    if (doorkeeper == 0) {
        ::close(::accept(listener, nullptr, nullptr));
        ::_exit(0);
    }
    EXPECT_EQ(shakeHandsWithBus("unix:path=" + path, longTime), BusHandshake::refused);
    ::waitpid(doorkeeper, nullptr, 0);
    ::close(listener);
}

}  // namespace
}  // namespace velmora
