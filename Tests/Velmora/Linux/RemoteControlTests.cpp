// SPDX-License-Identifier: MIT
// The service and its clients on a session bus of their own.
#include <gtest/gtest.h>

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusReply>
#include <chrono>
#include <future>
#include <memory>
#include <optional>

#include "Tests/Support/EventLoop.h"
#include "Tests/Support/PrivateBus.h"
#include "Velmora/Platform/Linux/RemoteControlClient.h"
#include "Velmora/Platform/Linux/RemoteControlService.h"

namespace velmora {
namespace {

class RemoteControlTest : public ::testing::Test {
  protected:
    static void SetUpTestSuite() {
        testing::coreApplication();
        bus = std::make_unique<testing::PrivateBus>();
    }
    static void TearDownTestSuite() { bus.reset(); }

    RemoteControlActions actions() {
        return {.showSettings = [this] { log += "settings "; },
                .showOnboarding = [this] { log += "onboarding "; },
                .toggleHoverLookup = [this] { return hovering = !hovering; },
                .diagnostics = [] { return std::string("diagnostics 知道"); },
                .copyDiagnostics = [this] { log += "copied "; },
                .quit = [this] { log += "quit "; }};
    }

    /// Asks from another thread, as another process would, while the service serves.
    template <typename Answer>
    Answer asClient(Answer (RemoteControlClient::*method)()) {
        auto answer = std::async(std::launch::async, [method] {
            RemoteControlClient client;
            return (client.*method)();
        });
        testing::waitUntil(
            [&] { return answer.wait_for(std::chrono::seconds(0)) == std::future_status::ready; });
        return answer.get();
    }

    bool isOnTheBus() {
        return QDBusConnection::sessionBus().interface()->isServiceRegistered(
            QStringLiteral("com.velmora.Velmora"));
    }

    static inline std::unique_ptr<testing::PrivateBus> bus;
    std::string log;
    bool hovering = false;
};

TEST_F(RemoteControlTest, WithoutAServiceClientsAnswerNothing) {
    EXPECT_FALSE(asClient(&RemoteControlClient::showSettings));
    EXPECT_EQ(asClient(&RemoteControlClient::toggleHoverLookup), std::nullopt);
    EXPECT_EQ(asClient(&RemoteControlClient::diagnostics), std::nullopt);
    EXPECT_FALSE(RemoteControlClient().quit());
}

TEST_F(RemoteControlTest, ServesEveryAction) {
    const RemoteControlService service(actions());
    ASSERT_TRUE(service.isOffered());
    ASSERT_TRUE(testing::waitUntil([&] { return isOnTheBus(); }));
    EXPECT_TRUE(asClient(&RemoteControlClient::showSettings));
    EXPECT_TRUE(asClient(&RemoteControlClient::showOnboarding));
    EXPECT_EQ(log, "settings onboarding ");
    EXPECT_EQ(asClient(&RemoteControlClient::toggleHoverLookup), true);
    EXPECT_EQ(asClient(&RemoteControlClient::toggleHoverLookup), false);
    EXPECT_EQ(asClient(&RemoteControlClient::diagnostics), "diagnostics 知道");
    EXPECT_TRUE(asClient(&RemoteControlClient::copyDiagnostics));
    EXPECT_EQ(log, "settings onboarding copied ");
}

TEST_F(RemoteControlTest, DescribesItselfAsTheInterfaceSays) {
    const RemoteControlService service(actions());
    QDBusMessage call = QDBusMessage::createMethodCall(
        QDBusConnection::sessionBus().baseService(), QStringLiteral("/com/velmora/Velmora"),
        QStringLiteral("org.freedesktop.DBus.Introspectable"), QStringLiteral("Introspect"));
    const QDBusReply<QString> reply = QDBusConnection::sessionBus().call(call);
    ASSERT_TRUE(reply.isValid());
    const QString xml = reply.value();
    EXPECT_TRUE(xml.contains(QStringLiteral("interface name=\"com.velmora.Velmora1\"")));
    for (const char* method : {"ShowSettings", "ShowOnboarding", "ToggleHoverLookup", "Diagnostics",
                               "CopyDiagnostics", "Quit"}) {
        EXPECT_TRUE(xml.contains(QStringLiteral("method name=\"%1\"").arg(QLatin1String(method))))
            << method;
    }
}

}  // namespace
}  // namespace velmora
