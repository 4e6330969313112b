// SPDX-License-Identifier: MIT
#include "Tests/Desktop/MainThread/MainThreadFaults.h"

#include <signal.h>

#include <QDBusPendingCall>
#include <cstdlib>
#include <fstream>
#include <optional>
#include <sstream>
#include <stdexcept>

#include "Tests/Contracts/Speech/PrivateSpeechDaemon.h"
#include "Tests/Contracts/StatusNotifier/TrayWatcher.h"
#include "Tests/Support/EventLoop.h"
#include "Tests/Support/VirtualDesktop/AccessibilityBus.h"
#include "Tests/Velmora/Updates/LoopbackHttpsServer.h"
#include "Velmora/Platform/Linux/StatusNotifier/BusMenuNode.h"

namespace velmora::test {

namespace {

using testing::TrayWatcher;
using Environment = ChildProcess::Environment;
using Act = std::function<void(HoverStage&)>;

const std::string ordinarySettings =
    "[General]\nhoverLookupEnabled=true\nonboardingCompleted=true\n";

/// The word of the sample text that is looked up.
constexpr std::size_t line = 0;
constexpr std::size_t character = 10;

void expect(bool condition, const char* what) {
    if (!condition) {
        throw std::runtime_error(what);
    }
}

void command(HoverStage& stage, const char* name) {
    expect(stage.velmora().command({name}).status == 0, name);
}

/// Looks a word up and opens its card: the card's frame.
Rect openCard(HoverStage& stage) {
    expect(!stage.hover(line, character).record.is_null(), "nothing is looked up");
    stage.desktop().pressKey("Shift_L");
    std::optional<Rect> card;
    stage.desktop().waitUntil([&] {
        for (const VirtualDesktop::Window& window : stage.velmora().windows()) {
            // The bubble is smaller, the shadow around the card larger.
            if (window.overrideRedirect && window.client.height >= 180 &&
                window.client.width >= 320 && window.client.width <= 390) {
                card = window.client;
            }
        }
        return card.has_value();
    });
    stage.desktop().releaseKey("Shift_L");
    expect(card.has_value(), "the dictionary does not open");
    return *card;
}

void clickLoudspeaker(HoverStage& stage, const Rect& card) {
    stage.desktop().click(static_cast<int>(card.maxX()) - 83, static_cast<int>(card.minY()) + 41);
}

/// What a user does in a day: looks up a word, opens its card, opens every window.
void useIt(HoverStage& stage) {
    openCard(stage);
    stage.leave();
    for (const char* const window : {"settings", "onboarding"}) {
        const std::size_t before = stage.velmora().windows().size();
        command(stage, window);
        expect(stage.waitForWindows(before + 1), window);
        stage.desktop().awaitRest(stage.velmora().process(), std::chrono::seconds(3));
    }
}

std::string ended(RunningVelmora& velmora) {
    ::kill(velmora.pid(), SIGTERM);
    expect(velmora.process().waitForExit(VirtualDesktop::patience) == 0, "it does not end");
    return velmora.log();
}

/// Our program with these settings over an editor; `act` while it runs.
std::string logOver(const std::string& settings, Environment environment, const Act& act) {
    HoverStage::Options options;
    options.compositor = true;
    options.velmora.settings = settings;
    options.velmora.environment = std::move(environment);
    HoverStage stage(ReadProgram::named("mousepad"), options);
    if (act) {
        act(stage);
    }
    useIt(stage);
    return ended(stage.velmora());
}

using LogUnder = std::function<std::string(const Environment&)>;

LogUnder ordinaryDay(const Act& act = {}) {
    return [act](const Environment& environment) {
        return logOver(ordinarySettings, environment, act);
    };
}

LogUnder withSettings(const std::string& further) {
    return [further](const Environment& environment) {
        return logOver(ordinarySettings + further, environment, {});
    };
}

std::string fontScale(const std::string& value) {
    return "popoverFontScale=" + value + "\n";
}

std::string settingsFromTheFuture() {
    std::ostringstream text;
    text << "formatVersion=99\npopoverFontScale=@Variant(\\0\\0\\0\\x87)\n"
            "hoverLookupShape=@ByteArray(\\xff\\xfe)\n[Windows]\nVelmora Settings=9 9 9 9 9 9\n"
            "[Panes]\n";
    for (int i = 0; i < 20000; ++i) {
        text << "key" << i << "=" << std::string(40, 'x') << "\n";
    }
    return text.str();
}

/// The first start, with the onboarding window that it opens.
std::string firstStart(const Environment& environment) {
    VirtualDesktop desktop;
    desktop.enter();
    RunningVelmora::Options options;
    options.environment = environment;
    options.settings.clear();
    options.readyStatus = "Hover lookup off";
    RunningVelmora velmora(desktop, options);
    desktop.waitForWindow([](const auto& each) { return each.title == "Velmora Onboarding"; });
    desktop.awaitRest(velmora.process(), std::chrono::seconds(5));
    return ended(velmora);
}

std::string withoutSessionBus(const Environment& further) {
    VirtualDesktop desktop;
    desktop.enter();
    const auto folder = desktop.folder() / "velmora";
    std::filesystem::create_directories(folder / "config/Velmora");
    std::ofstream(folder / "config/Velmora/Velmora.conf") << ordinarySettings;
    Environment environment = desktop.environment();
    environment["XDG_CONFIG_HOME"] = (folder / "config").string();
    environment["XDG_DATA_HOME"] = (folder / "data").string();
    environment["VELMORA_LOG"] = "debug";
    environment["DBUS_SESSION_BUS_ADDRESS"] = "unix:path=/nonexistent/bus";
    environment.insert(further.begin(), further.end());
    const auto log = [&folder] {
        std::ostringstream text;
        text << std::ifstream(folder / "log.txt").rdbuf();
        return text.str();
    };
    ChildProcess process(
        {{VELMORA_BUILD_FOLDER "/velmora"}, environment, folder, folder / "log.txt", -1});
    expect(
        desktop.waitUntil([&] { return log().find("velmora.hover: ready") != std::string::npos; }),
        "it does not become ready");
    desktop.movePointer(300, 300);
    desktop.click(400, 300);
    desktop.awaitRest(process, std::chrono::seconds(5));
    ::kill(process.pid(), SIGTERM);
    expect(process.waitForExit(VirtualDesktop::patience) == 0, "it does not end");
    return log();
}

QDBusMessage callMenu(const QString& item, const char* method, const QVariantList& arguments) {
    QDBusMessage message = QDBusMessage::createMethodCall(
        item, QStringLiteral("/StatusNotifierItem/Menu"), QStringLiteral("com.canonical.dbusmenu"),
        QString::fromLatin1(method));
    message.setArguments(arguments);
    const QString host = QStringLiteral("host");
    const QDBusPendingCall reply = TrayWatcher::connection(host).asyncCall(message);
    expect(testing::waitUntil([&] { return reply.isFinished(); }), method);
    QDBusConnection::disconnectFromBus(host);
    expect(!reply.isError(), method);
    return reply.reply();
}

/// Asks for the item's menu as a panel does that opens it.
QDBusMessage openMenu(const QString& item) {
    callMenu(item, "AboutToShow", {0});
    return callMenu(item, "GetLayout", {0, -1, QStringList()});
}

void trayComesAndGoes(HoverStage& /*stage*/) {
    TrayWatcher watcher;
    for (int round = 0; round < 3; ++round) {
        watcher.registered.clear();
        expect(watcher.appear(), "no watcher");
        expect(testing::waitUntil([&] { return !watcher.registered.isEmpty(); }, 60000),
               "it does not register");
        for (const bool isThere : {false, true}) {
            const int asked = watcher.questions;
            watcher.setHostRegistered(isThere);
            expect(testing::waitUntil([&] { return watcher.questions > asked; }, 60000),
                   "it does not ask");
        }
        openMenu(watcher.registered.constFirst());
        watcher.leave();
    }
}

void watcherLies(HoverStage& stage) {
    TrayWatcher watcher;
    for (const auto answer : {TrayWatcher::Answer::error, TrayWatcher::Answer::nonsense,
                              TrayWatcher::Answer::silence}) {
        watcher.answer = answer;
        const int asked = watcher.questions;
        expect(watcher.appear(), "no watcher");
        expect(testing::waitUntil([&] { return watcher.questions > asked; }, 60000),
               "it does not ask");
        watcher.setHostRegistered(false);
        watcher.setHostRegistered(true);
        // Whatever the watcher keeps to itself, the program answers others.
        command(stage, "diagnostics");
        watcher.leave();
    }
}

const BusMenuNode* entry(const BusMenuNode& node, const QString& label) {
    if (node.properties.value(QStringLiteral("label")).toString() == label) {
        return &node;
    }
    for (const BusMenuNode& child : node.children) {
        if (const BusMenuNode* const found = entry(child, label)) {
            return found;
        }
    }
    return nullptr;
}

/// Looks for updates as the user does, by the menu, and waits until the window tells of the feed
/// that this server has.
void lookForUpdates(HoverStage& stage, LoopbackHttpsServer& server) {
    TrayWatcher watcher;
    expect(watcher.appear(), "no watcher");
    expect(testing::waitUntil([&] { return !watcher.registered.isEmpty(); }, 60000),
           "it does not register");
    const QString item = watcher.registered.constFirst();
    const QDBusMessage layout = openMenu(item);
    const auto root = qdbus_cast<BusMenuNode>(layout.arguments().value(1));
    const BusMenuNode* const update = entry(root, QStringLiteral("Check for Updates..."));
    expect(update != nullptr, "there is no entry for updates");
    callMenu(item, "Event",
             {update->id, QStringLiteral("clicked"), QVariant::fromValue(QDBusVariant(0)), 0U});
    expect(testing::waitUntil([&] { return server.ended() > 0; }, 60000), "no feed is read");
    stage.desktop().waitForWindow([](const auto& each) { return each.title == "Velmora Update"; });
    stage.desktop().awaitRest(stage.velmora().process(), std::chrono::seconds(3));
    watcher.leave();
}

/// A process that does nothing as long as this lives, and answers nobody.
class Stopped {
  public:
    explicit Stopped(pid_t process) : process_(process) { ::kill(process_, SIGSTOP); }
    Stopped(const Stopped&) = delete;
    Stopped& operator=(const Stopped&) = delete;
    ~Stopped() { ::kill(process_, SIGCONT); }

  private:
    pid_t process_;
};

std::string accessibilityStopped(const Environment& environment) {
    HoverStage::Options options;
    options.compositor = true;
    options.velmora.environment = environment;
    HoverStage stage(ReadProgram::named("mousepad"), options);
    AccessibilityBus bus(stage.desktop());
    // Who is asked for last would ask the first.
    const pid_t registry = bus.registry();
    const Stopped stoppedLauncher(bus.launcher());
    const Stopped stoppedRegistry(registry);
    useIt(stage);
    return ended(stage.velmora());
}

LogUnder withFeed(const QByteArray& answer, bool isEndless) {
    return [answer, isEndless](Environment environment) {
        testing::coreApplication();
        LoopbackHttpsServer server([answer](const QByteArray&) { return answer; }, isEndless);
        if (!isEndless) {
            server.hangUpAfterAnswer();
        }
        environment["VELMORA_TEST_FEED"] = server.url("/feed");
        HoverStage::Options options;
        options.compositor = true;
        options.velmora.program = VELMORA_BUILD_FOLDER "/velmora_fed_application";
        options.velmora.environment = std::move(environment);
        HoverStage stage(ReadProgram::named("mousepad"), options);
        lookForUpdates(stage, server);
        return ended(stage.velmora());
    };
}

/// As long as a feed may be, with a new version in it.
QByteArray longFeed() {
    QByteArray items;
    const QByteArray notes(1900, 'n');
    for (int i = 0; i < 500; ++i) {
        items += "<item><v:version>2." + QByteArray::number(i) + "</v:version><description>" +
                 notes +
                 "</description><enclosure url=\"https://updates.example/velmora.deb\" "
                 "length=\"1\" v:edSignature=\"s\"/></item>";
    }
    return LoopbackHttpsServer::ok("<rss xmlns:v=\"v\"><channel>" + items + "</channel></rss>");
}

LogUnder oddAnalyticsHost(const std::string& host) {
    return [host](Environment environment) {
        environment["VELMORA_POSTHOG_TOKEN"] = "token";
        environment["VELMORA_POSTHOG_HOST"] = host;
        return logOver(ordinarySettings, environment, [](HoverStage& stage) {
            command(stage, "toggle");
            command(stage, "toggle");
        });
    };
}

std::string withoutSpeechDaemon(Environment environment) {
    environment["SPEECHD_ADDRESS"] = "unix_socket:/nonexistent/socket";
    return logOver(ordinarySettings, environment, [](HoverStage& stage) {
        clickLoudspeaker(stage, openCard(stage));
        stage.leave();
    });
}

std::string speechDaemonKilled(Environment environment) {
    PrivateSpeechDaemon daemon("espeak-ng");
    environment["SPEECHD_ADDRESS"] = std::getenv("SPEECHD_ADDRESS");
    return logOver(ordinarySettings, environment, [&daemon](HoverStage& stage) {
        const Rect card = openCard(stage);
        clickLoudspeaker(stage, card);
        expect(daemon.nextSpoken(std::chrono::seconds(60)).has_value(), "nothing is said");
        daemon.kill();
        clickLoudspeaker(stage, card);
        stage.leave();
        daemon.restart();
        clickLoudspeaker(stage, openCard(stage));
        stage.leave();
    });
}

}  // namespace

const std::vector<MainThreadFault>& mainThreadFaults() {
    static const std::vector<MainThreadFault> faults{
        {"firstStart", firstStart},
        {"ordinaryDay", ordinaryDay()},
        {"withoutSessionBus", withoutSessionBus},
        {"trayComesAndGoes", ordinaryDay(trayComesAndGoes)},
        {"watcherLies", ordinaryDay(watcherLies)},
        {"settingsFromTheFuture", withSettings(settingsFromTheFuture())},
        {"fontScaleZero", withSettings(fontScale("0"))},
        {"fontScaleNegative", withSettings(fontScale("-1"))},
        {"fontScaleNotANumber", withSettings(fontScale("nan"))},
        {"fontScaleText", withSettings(fontScale("large"))},
        {"fontScaleHuge", withSettings(fontScale("1e9"))},
        {"analyticsHostWithBlanks", oddAnalyticsHost("no such host/ at all")},
        {"analyticsHostUnknown", oddAnalyticsHost("user@nowhere.invalid/a/path")},
        {"analyticsHostIPv6", oddAnalyticsHost("http://[::1]:9")},
        {"feedOfOneGigabyte", withFeed("HTTP/1.1 200 OK\r\n\r\n<rss><channel>", true)},
        {"feedAsLongAsItMayBe", withFeed(longFeed(), false)},
        {"accessibilityStopped", accessibilityStopped},
        {"withoutSpeechDaemon", withoutSpeechDaemon},
        {"speechDaemonKilled", speechDaemonKilled},
    };
    return faults;
}

}  // namespace velmora::test
