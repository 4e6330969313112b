// SPDX-License-Identifier: MIT
// The executable as its user meets it: started, asked, ended. Without a display.
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/stat.h>

#include <QByteArray>
#include <QProcess>
#include <QProcessEnvironment>
#include <QStringList>
#include <algorithm>
#include <filesystem>
#include <memory>
#include <optional>
#include <vector>

#include "Tests/Support/EventLoop.h"
#include "Tests/Support/Files.h"
#include "Tests/Support/PrivateBus.h"
#include "Tests/Support/TemporaryFolder.h"

namespace velmora {
namespace {

using testing::waitUntil;

constexpr int longWait = 30000;  // Milliseconds.

class ApplicationTest : public ::testing::Test {
  protected:
    struct Outcome {
        int status = -1;
        QByteArray output;
        QByteArray errors;
    };

    void SetUp() override {
        testing::coreApplication();
        bus_ = std::make_unique<testing::PrivateBus>();
        environment = QProcessEnvironment::systemEnvironment();
        const auto set = [this](const char* name, const std::string& value) {
            environment.insert(QString::fromLatin1(name), QString::fromStdString(value));
        };
        set("XDG_CONFIG_HOME", folder / "config");
        set("XDG_DATA_HOME", folder / "data");
        set("QT_QPA_PLATFORM", "offscreen");
        set("VELMORA_PLATFORM", "wayland");
        set("DBUS_SESSION_BUS_ADDRESS", qgetenv("DBUS_SESSION_BUS_ADDRESS").toStdString());
        environment.remove(QStringLiteral("VELMORA_LOG"));
    }

    std::unique_ptr<QProcess> start(const QStringList& arguments = {}) {
        auto process = std::make_unique<QProcess>();
        process->setProcessEnvironment(environment);
        process->start(QStringLiteral(VELMORA_BUILD_FOLDER "/velmora-app"), arguments);
        EXPECT_TRUE(process->waitForStarted(longWait));
        return process;
    }

    static Outcome end(QProcess& process) {
        EXPECT_TRUE(process.state() == QProcess::NotRunning || process.waitForFinished(longWait));
        return {process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1,
                process.readAllStandardOutput(), process.readAllStandardError()};
    }

    Outcome run(const QStringList& arguments = {}) { return end(*start(arguments)); }

    /// Started and on the bus.
    std::unique_ptr<QProcess> startApplication() {
        auto process = start();
        EXPECT_TRUE(waitUntil([&] { return run({QStringLiteral("diagnostics")}).status == 0; }));
        return process;
    }

    /// As it is when the user logs out.
    void endSessionBus() { bus_.reset(); }

    testing::TemporaryFolder folder;
    QProcessEnvironment environment;

  private:
    std::unique_ptr<testing::PrivateBus> bus_;
};

TEST_F(ApplicationTest, RunsInSilenceUntilItIsAskedToQuit) {
    const auto application = startApplication();
    const Outcome diagnostics = run({QStringLiteral("diagnostics")});
    EXPECT_EQ(diagnostics.output.toStdString(),
              "Velmora lookup diagnostics\nHover lookup enabled: false\n"
              "Accessibility granted: false\nScreen Recording granted: false\n"
              "Live status: Hover lookup off\nLast hover: No hover attempts yet\n"
              "Text recognition: Wayland sessions are not supported yet; choose an X11 session\n");
    EXPECT_EQ(run({QStringLiteral("quit")}).status, 0);
    const Outcome ended = end(*application);
    EXPECT_EQ(ended.status, 0);
    EXPECT_EQ(ended.output, "");
    EXPECT_EQ(ended.errors, "");
}

TEST_F(ApplicationTest, EndsCleanlyOnSignals) {
    for (const int signal : {SIGTERM, SIGINT, SIGHUP}) {
        const auto application = startApplication();
        ::kill(static_cast<pid_t>(application->processId()), signal);
        EXPECT_EQ(end(*application).status, 0) << signal;
    }
}

TEST_F(ApplicationTest, EndsCleanlyWithTheSessionBus) {
    const auto application = startApplication();
    endSessionBus();
    const Outcome ended = end(*application);
    EXPECT_EQ(ended.status, 0);
    EXPECT_EQ(ended.output + ended.errors, "");
}

TEST_F(ApplicationTest, ASecondStartEndsAtOnceInSilence) {
    const auto application = startApplication();
    const Outcome second = run();
    EXPECT_EQ(second.status, 0);
    EXPECT_EQ(second.output + second.errors, "");
    EXPECT_EQ(run({QStringLiteral("diagnostics")}).status, 0);
    run({QStringLiteral("quit")});
    end(*application);
}

TEST_F(ApplicationTest, StartsAgainAfterItWasKilled) {
    auto application = startApplication();
    application->kill();
    application->waitForFinished(longWait);
    application = startApplication();
    EXPECT_EQ(run({QStringLiteral("quit")}).status, 0);
    EXPECT_EQ(end(*application).status, 0);
}

TEST_F(ApplicationTest, OfManyStartsAtOnceOneRemains) {
    std::vector<std::unique_ptr<QProcess>> starts;
    for (int i = 0; i < 20; ++i) {
        starts.push_back(start());
    }
    const auto running = [&] {
        return std::count_if(starts.begin(), starts.end(), [](const auto& process) {
            return process->state() != QProcess::NotRunning;
        });
    };
    EXPECT_TRUE(waitUntil([&] { return running() == 1; }, longWait));
    EXPECT_TRUE(waitUntil([&] { return run({QStringLiteral("quit")}).status == 0; }));
    for (const auto& process : starts) {
        EXPECT_EQ(end(*process).status, 0);
    }
}

TEST_F(ApplicationTest, ToggleSwitchesAndPersists) {
    const auto application = startApplication();
    EXPECT_EQ(run({QStringLiteral("toggle")}).output, "Hover lookup on\n");
    EXPECT_EQ(testing::readFile(folder / "config/Velmora/Velmora.conf"),
              "[General]\nhoverLookupEnabled=true\n");
    EXPECT_EQ(run({QStringLiteral("toggle")}).output, "Hover lookup off\n");
    EXPECT_EQ(run({QStringLiteral("settings")}).status, 0);
    EXPECT_EQ(run({QStringLiteral("onboarding")}).status, 0);
    run({QStringLiteral("quit")});
    end(*application);
}

TEST_F(ApplicationTest, CommandsSayWhereNoneRuns) {
    for (const char* command : {"toggle", "diagnostics", "quit", "settings", "onboarding"}) {
        const Outcome outcome = run({QString::fromLatin1(command)});
        EXPECT_EQ(outcome.status, 1) << command;
        EXPECT_EQ(outcome.output, "") << command;
        EXPECT_EQ(outcome.errors.count('\n'), 1) << outcome.errors.toStdString();
    }
}

TEST_F(ApplicationTest, WrongUsageIsTwo) {
    EXPECT_EQ(run({QStringLiteral("toggle"), QStringLiteral("on")}).status, 2);
    EXPECT_EQ(run({QStringLiteral("nonsense")}).status, 2);
    EXPECT_EQ(run({QStringLiteral("toggle"), QStringLiteral("--help")}).status, 0);
    environment.insert(QStringLiteral("VELMORA_PLATFORM"), QStringLiteral("abacus"));
    const Outcome outcome = run();
    EXPECT_EQ(outcome.status, 2);
    EXPECT_EQ(outcome.errors.count('\n'), 1);
}

TEST_F(ApplicationTest, WithoutADisplayItSaysSo) {
    environment.remove(QStringLiteral("QT_QPA_PLATFORM"));
    environment.remove(QStringLiteral("DISPLAY"));
    environment.insert(QStringLiteral("VELMORA_PLATFORM"), QStringLiteral("x11"));
    for (const char* display : {"", ":987654"}) {
        environment.insert(QStringLiteral("DISPLAY"), QString::fromLatin1(display));
        const Outcome outcome = run();
        EXPECT_EQ(outcome.status, 2) << display;
        EXPECT_EQ(outcome.errors.count('\n'), 1) << outcome.errors.toStdString();
    }
}

TEST_F(ApplicationTest, RunsOnWithoutASessionBus) {
    environment.insert(QStringLiteral("DBUS_SESSION_BUS_ADDRESS"),
                       QStringLiteral("unix:path=/nonexistent/bus"));
    const auto application = start();
    // The lock is there before anything else, so a second start ends while the first one runs on.
    EXPECT_TRUE(
        waitUntil([&] { return std::filesystem::exists(folder / "data/Velmora/velmora.lock"); }));
    EXPECT_EQ(run().status, 0);
    EXPECT_EQ(run({QStringLiteral("toggle")}).status, 1);
    EXPECT_EQ(application->state(), QProcess::Running);
    // Only a program that has its handlers in place ends with 0, so ask until it has.
    EXPECT_TRUE(waitUntil([&] {
        const QByteArray handled = QByteArray::fromStdString(
            testing::readFile("/proc/" + std::to_string(application->processId()) + "/status"));
        const qsizetype at = handled.indexOf("SigCgt:");
        return at >= 0 && (handled.mid(at + 7).trimmed().left(16).toULongLong(nullptr, 16) &
                           (1ULL << (SIGTERM - 1))) != 0;
    }));
    application->terminate();
    const Outcome ended = end(*application);
    EXPECT_EQ(ended.status, 0);
    EXPECT_EQ(ended.output + ended.errors, "");
}

TEST_F(ApplicationTest, AReadOnlyOrBrokenSettingsFileDoesNoHarm) {
    testing::writeFile(folder / "config/Velmora/Velmora.conf",
                       "\xff\xfe[[[\n[General]\npopoverFontScale=nan\nhoverLookupEnabled=maybe\n");
    const auto application = startApplication();
    EXPECT_TRUE(run({QStringLiteral("diagnostics")}).output.contains("enabled: false"));
    EXPECT_EQ(run({QStringLiteral("toggle")}).status, 0);
    run({QStringLiteral("quit")});
    EXPECT_EQ(end(*application).status, 0);
    EXPECT_NE(
        testing::readFile(folder / "config/Velmora/Velmora.conf").find("hoverLookupEnabled=true"),
        std::string::npos);
}

}  // namespace
}  // namespace velmora
