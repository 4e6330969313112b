// SPDX-License-Identifier: MIT
// Updates from end to end but for the window: a real server, real signatures, a real command that
// stands for the desktop's installer.
#include <gtest/gtest.h>
#include <sodium.h>

#include <QTcpServer>
#include <array>
#include <filesystem>
#include <map>
#include <optional>

#include "Tests/Support/EventLoop.h"
#include "Tests/Support/Files.h"
#include "Tests/Support/TemporaryFolder.h"
#include "Tests/Velmora/Updates/FakeUpdateWindow.h"
#include "Tests/Velmora/Updates/LoopbackHttpsServer.h"
#include "Velmora/Coordination/SoftwareUpdateController.h"
#include "Velmora/Platform/Linux/EventLoopMainQueue.h"
#include "Velmora/Platform/Linux/SerialWorkerQueue.h"
#include "Velmora/Platform/Linux/Updates/DesktopPackageInstaller.h"
#include "Velmora/Platform/Linux/Updates/NetworkHttpFetcher.h"
#include "Velmora/Platform/Linux/Updates/SodiumSignatureVerifier.h"
#include "Velmora/Platform/Recorded/ManualClock.h"

namespace velmora::test {
namespace {

using Phase = UpdateWindowState::Phase;

/// A pair of keys, and what is signed with it.
class Maker {
  public:
    Maker() {
        EXPECT_GE(sodium_init(), 0);
        crypto_sign_keypair(publicKey_.data(), secretKey_.data());
    }
    std::string publicKey() const { return base64(publicKey_.data(), publicKey_.size()); }
    std::string signature(const std::string& text) const {
        std::array<unsigned char, crypto_sign_BYTES> bytes{};
        crypto_sign_detached(bytes.data(), nullptr,
                             reinterpret_cast<const unsigned char*>(text.data()), text.size(),
                             secretKey_.data());
        return base64(bytes.data(), bytes.size());
    }

  private:
    static std::string base64(const unsigned char* bytes, std::size_t count) {
        std::string text(sodium_base64_ENCODED_LEN(count, sodium_base64_VARIANT_ORIGINAL), '\0');
        sodium_bin2base64(text.data(), text.size(), bytes, count, sodium_base64_VARIANT_ORIGINAL);
        text.resize(text.find('\0'));
        return text;
    }

    std::array<unsigned char, crypto_sign_PUBLICKEYBYTES> publicKey_{};
    std::array<unsigned char, crypto_sign_SECRETKEYBYTES> secretKey_{};
};

class UpdatesFromAServerTests : public ::testing::Test {
  protected:
    UpdatesFromAServerTests() {
        testing::writeFile(opener,
                           "#!/bin/sh\ncp \"$1\" \"$0.draft\"\n"
                           "mv \"$0.draft\" \"$0.opened\"\n");
        std::filesystem::permissions(opener, std::filesystem::perms::owner_all);
    }

    /// A feed with one version of the package.
    QByteArray feed(const std::string& version, const std::string& signature) const {
        return QByteArray::fromStdString(
            "<rss version=\"2.0\" xmlns:u=\"u\"><channel><item><u:version>" + version +
            "</u:version><description>Notes of " + version + "</description><enclosure url=\"" +
            server.url("/files/velmora.deb") + "\" length=\"" + std::to_string(package.size()) +
            "\" u:edSignature=\"" + signature + "\"/></item></channel></rss>");
    }
    QByteArray feed(const std::string& version) const {
        return feed(version, maker.signature(package));
    }
    void serve(const QByteArray& path, const QByteArray& answer) { answers[path] = answer; }
    void serveFeed(const QByteArray& body) { serve("/feed", LoopbackHttpsServer::ok(body)); }
    void servePackage(const std::string& body) {
        serve("/files/velmora.deb", LoopbackHttpsServer::ok(QByteArray::fromStdString(body)));
    }
    static QByteArray redirection(const QByteArray& to) {
        return "HTTP/1.1 302 Found\r\nLocation: " + to + "\r\nContent-Length: 0\r\n\r\n";
    }

    SoftwareUpdateController& updates() {
        if (!controller) {
            controller.emplace(UpdateConfiguration{feedUrl, maker.publicKey(), "1.0"},
                               SoftwareUpdateController::Services{
                                   fetcher, verifier, installer, clock, window, worker, mainQueue});
        }
        return *controller;
    }
    /// What the window says once the user who asked has an answer.
    std::string answerToTheUser() {
        updates().checkForUpdates();
        return settled();
    }
    std::string settled() {
        EXPECT_TRUE(testing::waitUntil([this] {
            return window.state.phase == Phase::message || window.state.phase == Phase::available;
        }));
        return window.state.phase == Phase::available ? "offers " + window.state.version
                                                      : window.state.message;
    }
    std::string answerToInstall() {
        EXPECT_EQ(answerToTheUser(), "offers 2.0");
        window.pressInstall();
        return settled();
    }
    /// Waits until the installer has got the package.
    void expectHandedOver() const {
        EXPECT_EQ(window.state.message, "The package was handed to the installer of your desktop.");
        EXPECT_TRUE(
            testing::waitUntil([this] { return std::filesystem::exists(opener + ".opened"); }));
        EXPECT_EQ(testing::readFile(opener + ".opened"), package);
    }
    void expectNothingHandedOver() const {
        EXPECT_FALSE(std::filesystem::exists(cache)) << "nothing was stored";
        EXPECT_FALSE(std::filesystem::exists(opener + ".opened"));
    }

    QCoreApplication& running = testing::coreApplication();
    testing::TemporaryFolder folder;
    const std::string cache = folder / "cache";
    const std::string opener = folder / "opener";
    const std::string package = std::string(300'000, 'p') + "end";
    const Maker maker;
    std::map<QByteArray, QByteArray> answers;
    LoopbackHttpsServer server{
        [this](const QByteArray& head) { return answers[head.mid(4, head.indexOf(" HTTP") - 4)]; }};
    std::string feedUrl = server.url("/feed");
    NetworkHttpFetcher fetcher{{LoopbackHttpsServer::authority()}};
    SodiumSignatureVerifier verifier;
    DesktopPackageInstaller installer{opener, cache, opener};
    ManualClock clock;
    FakeUpdateWindow window;
    EventLoopMainQueue mainQueue;
    SerialWorkerQueue worker{"updates"};
    std::optional<SoftwareUpdateController> controller;
};

TEST_F(UpdatesFromAServerTests, ANewerVersionIsOfferedAndItsPackageHandedToTheInstaller) {
    serveFeed(feed("2.0"));
    servePackage(package);
    answerToInstall();
    expectHandedOver();
    EXPECT_EQ(window.state.currentVersion, "1.0");
    EXPECT_EQ(testing::readFile(cache + "/velmora.deb"), package);
}

TEST_F(UpdatesFromAServerTests, TheSameAndAnOlderVersionAreNoUpdate) {
    for (const char* version : {"1.0", "0.9"}) {
        serveFeed(feed(version));
        EXPECT_EQ(answerToTheUser(), "Velmora 1.0 is the newest version.") << version;
    }
    EXPECT_EQ(updates().availableUpdateVersion(), std::nullopt);
}

TEST_F(UpdatesFromAServerTests, TheDailyCheckOpensNoWindowAndAsksByTheEntityTag) {
    serve("/feed", LoopbackHttpsServer::ok(feed("2.0"), "ETag: \"one\"\r\n"));
    updates();
    clock.advance(60);
    EXPECT_TRUE(testing::waitUntil([this] { return updates().availableUpdateVersion() == "2.0"; }));
    EXPECT_FALSE(window.isShown);
    serve("/feed", "HTTP/1.1 304 Not Modified\r\nETag: \"one\"\r\n\r\n");
    EXPECT_EQ(answerToTheUser(), "offers 2.0");
    EXPECT_TRUE(server.heads().back().toLower().contains("if-none-match: \"one\""));
}

TEST_F(UpdatesFromAServerTests, AMalformedFeedIsDamaged) {
    const QByteArray whole = feed("2.0");
    for (const QByteArray& body :
         {QByteArray("<html><body>404</body></html>"), whole.left(whole.size() / 2),
          QByteArray("\0\xff\xfe", 3), QByteArray()}) {
        serveFeed(body);
        EXPECT_EQ(answerToTheUser(), "The update feed is damaged.") << body.toStdString();
    }
}

TEST_F(UpdatesFromAServerTests, ATruncatedFeedOrPackageIsNotRead) {
    server.hangUpAfterAnswer();
    serve("/feed", LoopbackHttpsServer::ok(feed("2.0")).chopped(40));
    EXPECT_TRUE(answerToTheUser().starts_with("The update feed could not be read: "))
        << window.state.message;
    serveFeed(feed("2.0"));
    serve("/files/velmora.deb",
          LoopbackHttpsServer::ok(QByteArray::fromStdString(package)).chopped(1000));
    EXPECT_TRUE(answerToInstall().starts_with("The update could not be downloaded: "))
        << window.state.message;
    expectNothingHandedOver();
}

TEST_F(UpdatesFromAServerTests, AWrongSignatureOrLengthIsThrownAway) {
    std::string other = package;
    other.back() = 'X';
    serveFeed(feed("2.0"));
    for (const std::string& body : {other, package.substr(1), std::string()}) {
        servePackage(body);
        EXPECT_EQ(answerToInstall(),
                  "The download is not what its maker signed. It was thrown away.");
    }
    servePackage(package);
    for (const std::string& signature :
         {Maker().signature(package), maker.signature(other), std::string("none")}) {
        serveFeed(feed("2.0", signature));
        EXPECT_EQ(answerToInstall(),
                  "The download is not what its maker signed. It was thrown away.");
    }
    expectNothingHandedOver();
}

TEST_F(UpdatesFromAServerTests, ARedirectToPlainHttpIsNotFollowed) {
    QTcpServer plain;
    ASSERT_TRUE(plain.listen(QHostAddress::LocalHost));
    const QByteArray target = "http://127.0.0.1:" + QByteArray::number(plain.serverPort()) + "/";
    serve("/feed", redirection(target));
    EXPECT_TRUE(answerToTheUser().starts_with("The update feed could not be read: "));
    serveFeed(feed("2.0"));
    serve("/files/velmora.deb", redirection(target));
    EXPECT_TRUE(answerToInstall().starts_with("The update could not be downloaded: "));
    EXPECT_FALSE(plain.hasPendingConnections());
    // A secure one is.
    servePackage(package);
    serve("/old", LoopbackHttpsServer::ok(feed("2.0")));
    serve("/feed", redirection("/old"));
    answerToInstall();
    expectHandedOver();
}

TEST_F(UpdatesFromAServerTests, AnEndlessAnswerIsCutOff) {
    LoopbackHttpsServer endless(
        [](const QByteArray&) { return QByteArray("HTTP/1.1 200 OK\r\n\r\n<rss>"); }, true);
    serve("/feed", redirection(QByteArray::fromStdString(endless.url("/feed"))));
    EXPECT_EQ(answerToTheUser(), "The update feed could not be read: it is larger than expected");
    serveFeed(feed("2.0"));
    serve("/files/velmora.deb", redirection(QByteArray::fromStdString(endless.url("/files"))));
    EXPECT_EQ(answerToInstall(), "The update could not be downloaded: it is larger than expected");
    expectNothingHandedOver();
}

TEST_F(UpdatesFromAServerTests, AFeedOfAGigabyteIsNotEvenBegun) {
    serve("/feed", "HTTP/1.1 200 OK\r\nContent-Length: 1000000000\r\n\r\n<rss>");
    EXPECT_EQ(answerToTheUser(), "The update feed could not be read: it is larger than expected");
}

TEST_F(UpdatesFromAServerTests, AServerInTroubleIsToldOf) {
    serve("/feed", "HTTP/1.1 500 Internal Server Error\r\nContent-Length: 4\r\n\r\noops");
    EXPECT_TRUE(answerToTheUser().starts_with("The update feed could not be read: "));
    serveFeed(feed("2.0"));
    serve("/files/velmora.deb", "HTTP/1.1 500 No\r\nContent-Length: 0\r\n\r\n");
    EXPECT_TRUE(answerToInstall().starts_with("The update could not be downloaded: "));
    expectNothingHandedOver();
}

TEST_F(UpdatesFromAServerTests, WithoutANetworkThatIsToldAndTheKnownVersionStays) {
    serveFeed(feed("2.0"));
    EXPECT_EQ(answerToTheUser(), "offers 2.0");
    window.pressLater();
    quint16 port = 0;
    {
        QTcpServer closed;
        ASSERT_TRUE(closed.listen(QHostAddress::LocalHost));
        port = closed.serverPort();
    }
    serve("/feed", redirection("https://127.0.0.1:" + QByteArray::number(port) + "/feed"));
    EXPECT_TRUE(answerToTheUser().starts_with("The update feed could not be read: "));
    EXPECT_EQ(updates().availableUpdateVersion(), "2.0");
    controller.reset();
    feedUrl = "https://127.0.0.1:" + std::to_string(port) + "/feed";
    EXPECT_TRUE(answerToTheUser().starts_with("The update feed could not be read: "));
}

TEST_F(UpdatesFromAServerTests, LaterCancelsTheDownload) {
    serveFeed(feed("2.0"));
    serve("/files/velmora.deb",
          LoopbackHttpsServer::ok(QByteArray::fromStdString(package)).chopped(1000));
    EXPECT_EQ(answerToTheUser(), "offers 2.0");
    window.pressInstall();
    EXPECT_TRUE(testing::waitUntil([this] { return window.state.progress > 0.9; }));
    window.pressLater();
    EXPECT_FALSE(window.isShown);
    servePackage(package);
    answerToInstall();
    expectHandedOver();
}

}  // namespace
}  // namespace velmora::test
