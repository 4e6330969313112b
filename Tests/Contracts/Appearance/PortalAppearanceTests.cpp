// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVariant>
#include <QDBusVirtualObject>
#include <QDeadlineTimer>
#include <QProcess>
#include <functional>
#include <memory>
#include <vector>

#include "Velmora/Platform/Linux/PortalAppearance.h"

namespace velmora::test {

namespace {

using ColorScheme = DesktopAppearance::ColorScheme;

const QString portalService = QStringLiteral("org.freedesktop.portal.Desktop");
const QString portalPath = QStringLiteral("/org/freedesktop/portal/desktop");
const QString settingsInterface = QStringLiteral("org.freedesktop.portal.Settings");

/// A settings portal that answers what the test says, or keeps silent.
class FakePortal : public QDBusVirtualObject {
  public:
    explicit FakePortal(const QString& busAddress)
        : bus_(QDBusConnection::connectToBus(busAddress, QStringLiteral("portal"))) {
        bus_.registerVirtualObject(portalPath, this);
    }
    ~FakePortal() override {
        bus_.unregisterObject(portalPath);
        leave();
    }

    void appear() { ASSERT_TRUE(bus_.registerService(portalService)); }
    void leave() { bus_.unregisterService(portalService); }

    void announce() {
        QDBusMessage signal = QDBusMessage::createSignal(portalPath, settingsInterface,
                                                         QStringLiteral("SettingChanged"));
        signal << QStringLiteral("org.freedesktop.appearance") << QStringLiteral("color-scheme")
               << QVariant::fromValue(QDBusVariant(answer));
        bus_.send(signal);
    }

    /// Answers the calls that were left without an answer.
    void answerLate() {
        for (const QDBusMessage& call : unanswered_) {
            reply(call);
        }
        unanswered_.clear();
    }

    QString introspect(const QString&) const override { return {}; }

    bool handleMessage(const QDBusMessage& message, const QDBusConnection&) override {
        if (message.member() != QStringLiteral("Read")) {
            return false;
        }
        ++reads;
        if (silent) {
            message.setDelayedReply(true);
            unanswered_.push_back(message);
        } else {
            reply(message);
        }
        return true;
    }

    QVariant answer = QVariant::fromValue(1U);
    bool silent = false;
    int reads = 0;

  private:
    void reply(const QDBusMessage& call) {
        const QVariant once = QVariant::fromValue(QDBusVariant(answer));
        bus_.send(call.createReply(QVariant::fromValue(QDBusVariant(once))));
    }

    QDBusConnection bus_;
    std::vector<QDBusMessage> unanswered_;
};

bool until(const std::function<bool()>& condition) {
    QDeadlineTimer deadline(60000);
    while (!condition() && !deadline.hasExpired()) {
        QCoreApplication::processEvents(QEventLoop::AllEvents, 50);
    }
    return condition();
}

class PortalAppearanceTest : public testing::Test {
  protected:
    FakePortal portal{qEnvironmentVariable("DBUS_SESSION_BUS_ADDRESS")};
};

TEST_F(PortalAppearanceTest, TellsWhatThePortalStates) {
    portal.appear();
    PortalAppearance appearance;
    EXPECT_EQ(appearance.colorScheme(), std::nullopt);
    EXPECT_TRUE(until([&] { return appearance.colorScheme() == ColorScheme::dark; }));
}

TEST_F(PortalAppearanceTest, FollowsChanges) {
    portal.appear();
    PortalAppearance appearance;
    std::vector<std::optional<ColorScheme>> heard;
    appearance.observe([&heard](auto scheme) { heard.push_back(scheme); });
    ASSERT_TRUE(until([&] { return heard.size() == 1; }));
    portal.answer = QVariant::fromValue(2U);
    portal.announce();
    ASSERT_TRUE(until([&] { return heard.size() == 2; }));
    portal.answer = QVariant::fromValue(0U);
    portal.announce();
    ASSERT_TRUE(until([&] { return heard.size() == 3; }));
    EXPECT_EQ(heard, (std::vector<std::optional<ColorScheme>>{ColorScheme::dark, ColorScheme::light,
                                                              std::nullopt}));
}

TEST_F(PortalAppearanceTest, NeverWaits) {
    portal.appear();
    portal.silent = true;
    PortalAppearance appearance;
    EXPECT_EQ(appearance.colorScheme(), std::nullopt);
    ASSERT_TRUE(until([&] { return portal.reads == 1; }));
    // Changes meanwhile are one more question, not many.
    for (int i = 0; i < 20; ++i) {
        portal.announce();
    }
    portal.silent = false;
    portal.answerLate();
    EXPECT_TRUE(until([&] { return appearance.colorScheme() == ColorScheme::dark; }));
    EXPECT_LT(portal.reads, 22);
}

TEST_F(PortalAppearanceTest, StatesNothingWithoutAPortal) {
    PortalAppearance appearance;
    int heard = 0;
    appearance.observe([&heard](auto) { ++heard; });
    // The portal comes later and announces itself with a change.
    portal.appear();
    portal.announce();
    EXPECT_TRUE(until([&] { return appearance.colorScheme() == ColorScheme::dark; }));
    EXPECT_EQ(heard, 1);
}

TEST_F(PortalAppearanceTest, AnswersOfAnotherKindStateNothing) {
    portal.appear();
    PortalAppearance appearance;
    ASSERT_TRUE(until([&] { return appearance.colorScheme() == ColorScheme::dark; }));
    portal.answer = QStringLiteral("dark");
    portal.announce();
    EXPECT_TRUE(until([&] { return !appearance.colorScheme().has_value(); }));
    portal.answer = QVariant::fromValue(7U);
    const int reads = portal.reads;
    portal.announce();
    ASSERT_TRUE(until([&] { return portal.reads > reads; }));
    EXPECT_EQ(appearance.colorScheme(), std::nullopt);
}

}  // namespace

}  // namespace velmora::test

int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    QProcess bus;
    bus.start(QStringLiteral("dbus-daemon"),
              {QStringLiteral("--session"), QStringLiteral("--nofork"),
               QStringLiteral("--nopidfile"), QStringLiteral("--print-address=1")});
    if (!bus.waitForStarted() || !bus.waitForReadyRead(60000)) {
        qCritical("dbus-daemon does not start");
        return 1;
    }
    qputenv("DBUS_SESSION_BUS_ADDRESS", bus.readLine().trimmed());
    int result = 0;
    {
        const QCoreApplication application(argc, argv);
        result = RUN_ALL_TESTS();
    }
    bus.kill();
    bus.waitForFinished();
    return result;
}
