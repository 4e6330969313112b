// SPDX-License-Identifier: MIT
#include "Velmora/Platform/Linux/Updates/NetworkHttpFetcher.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QTcpServer>
#include <optional>

#include "Tests/Velmora/Updates/LoopbackHttpsServer.h"

namespace velmora::test {
namespace {

class NetworkHttpFetcherTests : public testing::Test {
  protected:
    static QCoreApplication& application() {
        static int count = 1;
        static char name[] = "update_tests";
        static char* arguments[] = {name, nullptr};
        static QCoreApplication instance(count, arguments);
        return instance;
    }

    HttpFetcher::Answer fetch(const std::string& url, std::int64_t mostBytes = 1000,
                              const std::string& entityTag = {}) {
        return fetchWith(trusting, url, mostBytes, entityTag);
    }

    HttpFetcher::Answer fetchWith(HttpFetcher& fetcher, const std::string& url,
                                  std::int64_t mostBytes, const std::string& entityTag) {
        std::optional<HttpFetcher::Answer> answer;
        const auto transfer = fetcher.fetch(
            {url, entityTag, mostBytes, 30, mostSeconds},
            [this](std::int64_t bytes) { received = bytes; },
            [&answer](HttpFetcher::Answer arrived) { answer = std::move(arrived); });
        const QDeadlineTimer deadline(30'000);
        while (!answer && !deadline.hasExpired()) {
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 100);
        }
        EXPECT_TRUE(answer) << "no answer from " << url;
        return answer.value_or(HttpFetcher::Answer{});
    }

    QCoreApplication& running = application();
    NetworkHttpFetcher trusting{{LoopbackHttpsServer::authority()}};
    std::int64_t received = 0;
    double mostSeconds = 120;
};

TEST_F(NetworkHttpFetcherTests, FetchesABodyAndItsEntityTag) {
    const LoopbackHttpsServer server(
        [](const QByteArray&) { return LoopbackHttpsServer::ok("feed", "ETag: \"one\"\r\n"); });
    const auto answer = fetch(server.url("/feed"));
    EXPECT_EQ(answer.error, "");
    EXPECT_EQ(answer.body, "feed");
    EXPECT_EQ(answer.entityTag, "\"one\"");
    EXPECT_EQ(received, 4);
}

TEST_F(NetworkHttpFetcherTests, LearnsThatNothingHasChanged) {
    const LoopbackHttpsServer server([](const QByteArray&) {
        return QByteArray("HTTP/1.1 304 Not Modified\r\nETag: \"one\"\r\n\r\n");
    });
    const auto answer = fetch(server.url("/feed"), 1000, "\"one\"");
    EXPECT_TRUE(answer.notModified);
    EXPECT_EQ(answer.error, "");
    ASSERT_EQ(server.heads().size(), 1);
    EXPECT_TRUE(server.heads()[0].toLower().contains("if-none-match: \"one\""))
        << server.heads()[0].toStdString();
}

TEST_F(NetworkHttpFetcherTests, RefusesACertificateThatNobodyVouchesFor) {
    const LoopbackHttpsServer server(
        [](const QByteArray&) { return LoopbackHttpsServer::ok("feed"); });
    NetworkHttpFetcher wary;
    const auto answer = fetchWith(wary, server.url("/feed"), 1000, {});
    EXPECT_NE(answer.error, "");
    EXPECT_EQ(answer.body, "");
}

TEST_F(NetworkHttpFetcherTests, RefusesAddressesThatAreNotSecure) {
    for (const char* url : {"http://127.0.0.1:1/feed", "file:///etc/passwd", "feed", "", "https://",
                            "https://two words/"}) {
        EXPECT_NE(fetch(url).error, "") << url;
    }
}

TEST_F(NetworkHttpFetcherTests, DoesNotFollowARedirectToPlainHttp) {
    QTcpServer plain;
    ASSERT_TRUE(plain.listen(QHostAddress::LocalHost));
    const QByteArray target = "http://127.0.0.1:" + QByteArray::number(plain.serverPort()) + "/";
    const LoopbackHttpsServer server([&target](const QByteArray&) {
        return "HTTP/1.1 302 Found\r\nLocation: " + target + "\r\nContent-Length: 0\r\n\r\n";
    });
    EXPECT_NE(fetch(server.url("/feed")).error, "");
    EXPECT_FALSE(plain.hasPendingConnections());
}

TEST_F(NetworkHttpFetcherTests, FollowsASecureRedirect) {
    const LoopbackHttpsServer server([](const QByteArray& head) {
        return head.startsWith("GET /old ")
                   ? QByteArray("HTTP/1.1 302 Found\r\nLocation: /new\r\nContent-Length: 0\r\n\r\n")
                   : LoopbackHttpsServer::ok("moved");
    });
    EXPECT_EQ(fetch(server.url("/old")).body, "moved");
}

TEST_F(NetworkHttpFetcherTests, CutsOffAnAnswerWithoutEnd) {
    const LoopbackHttpsServer server(
        [](const QByteArray&) { return QByteArray("HTTP/1.1 200 OK\r\n\r\n"); }, true);
    const auto answer = fetch(server.url("/feed"), 1 << 20);
    EXPECT_EQ(answer.error, "it is larger than expected");
    EXPECT_LE(received, 1 << 20);
}

TEST_F(NetworkHttpFetcherTests, DoesNotEvenBeginAnAnswerThatAnnouncesTooMuch) {
    const LoopbackHttpsServer server([](const QByteArray&) {
        return QByteArray("HTTP/1.1 200 OK\r\nContent-Length: 1000000000\r\n\r\nx");
    });
    EXPECT_EQ(fetch(server.url("/feed"), 1000).error, "it is larger than expected");
}

TEST_F(NetworkHttpFetcherTests, GivesUpAnAnswerThatComesByteByByte) {
    LoopbackHttpsServer* slow = nullptr;
    LoopbackHttpsServer server([&slow](const QByteArray&) {
        slow->trickleAfterAnswer();
        return QByteArray("HTTP/1.1 200 OK\r\nContent-Length: 1000000\r\n\r\n<rss>");
    });
    slow = &server;
    mostSeconds = 1;
    EXPECT_EQ(fetch(server.url("/feed"), 1 << 20).error, "it takes too long");
}

TEST_F(NetworkHttpFetcherTests, ReportsWhatTheServerSaysIsWrong) {
    const LoopbackHttpsServer server([](const QByteArray&) {
        return QByteArray("HTTP/1.1 500 No\r\nContent-Length: 4\r\n\r\noops");
    });
    const auto answer = fetch(server.url("/feed"));
    EXPECT_NE(answer.error, "");
    EXPECT_EQ(answer.body, "");
}

TEST_F(NetworkHttpFetcherTests, ReportsAnAnswerThatBreaksOff) {
    LoopbackHttpsServer* breaking = nullptr;
    LoopbackHttpsServer server([&breaking](const QByteArray&) {
        breaking->hangUpAfterAnswer();
        return QByteArray("HTTP/1.1 200 OK\r\nContent-Length: 1000\r\n\r\n<rss>");
    });
    breaking = &server;
    EXPECT_NE(fetch(server.url("/feed")).error, "");
}

TEST_F(NetworkHttpFetcherTests, ReportsThatNobodyListens) {
    quint16 port = 0;
    {
        QTcpServer closed;
        ASSERT_TRUE(closed.listen(QHostAddress::LocalHost));
        port = closed.serverPort();
    }
    EXPECT_NE(fetch("https://127.0.0.1:" + std::to_string(port) + "/feed").error, "");
}

TEST_F(NetworkHttpFetcherTests, CallsNobodyAfterItWasCancelled) {
    const LoopbackHttpsServer server(
        [](const QByteArray&) { return LoopbackHttpsServer::ok("feed"); });
    bool called = false;
    auto transfer = trusting.fetch(
        {server.url("/feed"), {}, 1000, 30, 120}, [](std::int64_t) {},
        [&called](const HttpFetcher::Answer&) { called = true; });
    transfer.reset();
    EXPECT_EQ(fetch(server.url("/feed")).body, "feed");
    EXPECT_FALSE(called);
}

}  // namespace
}  // namespace velmora::test
