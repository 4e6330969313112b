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
std::string logOver(const std::string& settings, const Environment& environment, const Act& act) {
    HoverStage::Options options;
    options.compositor = true;
    options.velmora.settings = settings;
    options.velmora.environment = environment;
    HoverStage stage(ReadProgram::named("mousepad"), options);
    if (act) {
        act(stage);
    }
    useIt(stage);
    return ended(stage.velmora());
}

std::function<std::string()> ordinaryDay(const Act& act = {}) {
    return [act] { return logOver(ordinarySettings, {}, act); };
}

std::function<std::string()> withSettings(const std::string& further) {
    return [further] { return logOver(ordinarySettings + further, {}, {}); };
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
std::string firstStart() {
    VirtualDesktop desktop;
    desktop.enter();
    RunningVelmora::Options options;
    options.settings.clear();
    options.readyStatus = "Hover lookup off";
    RunningVelmora velmora(desktop, options);
    desktop.waitForWindow([](const auto& each) { return each.title == "Velmora Onboarding"; });
    desktop.awaitRest(velmora.process(), std::chrono::seconds(5));
    return ended(velmora);
}

std::string withoutSessionBus() {
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

/// Asks for the item's menu as a panel does that opens it.
void openMenu(const QString& item) {
    QDBusConnection bus = TrayWatcher::connection(QStringLiteral("host"));
    for (const auto& [method, arguments] :
         {std::pair<const char*, QVariantList>{"AboutToShow", {0}},
          std::pair<const char*, QVariantList>{"GetLayout", {0, -1, QStringList()}}}) {
        QDBusMessage message = QDBusMessage::createMethodCall(
            item, QStringLiteral("/StatusNotifierItem/Menu"),
            QStringLiteral("com.canonical.dbusmenu"), QString::fromLatin1(method));
        message.setArguments(arguments);
        const QDBusPendingCall reply = bus.asyncCall(message);
        expect(testing::waitUntil([&] { return reply.isFinished(); }), method);
        expect(!reply.isError(), method);
    }
    QDBusConnection::disconnectFromBus(QStringLiteral("host"));
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

std::string oddAnalyticsHost(const std::string& host) {
    return logOver(ordinarySettings,
                   {{"VELMORA_POSTHOG_TOKEN", "token"}, {"VELMORA_POSTHOG_HOST", host}},
                   [](HoverStage& stage) {
                       command(stage, "toggle");
                       command(stage, "toggle");
                   });
}

std::string withoutSpeechDaemon() {
    return logOver(ordinarySettings, {{"SPEECHD_ADDRESS", "unix_socket:/nonexistent/socket"}},
                   [](HoverStage& stage) {
                       clickLoudspeaker(stage, openCard(stage));
                       stage.leave();
                   });
}

std::string speechDaemonKilled() {
    PrivateSpeechDaemon daemon("espeak-ng");
    return logOver(ordinarySettings, {{"SPEECHD_ADDRESS", std::getenv("SPEECHD_ADDRESS")}},
                   [&daemon](HoverStage& stage) {
                       const Rect card = openCard(stage);
                       clickLoudspeaker(stage, card);
                       expect(daemon.nextSpoken(std::chrono::seconds(60)).has_value(),
                              "nothing is said");
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
        {"analyticsHostWithBlanks", [] { return oddAnalyticsHost("no such host/ at all"); }},
        {"analyticsHostUnknown", [] { return oddAnalyticsHost("user@nowhere.invalid/a/path"); }},
        {"analyticsHostIPv6", [] { return oddAnalyticsHost("http://[::1]:9"); }},
        {"withoutSpeechDaemon", withoutSpeechDaemon},
        {"speechDaemonKilled", speechDaemonKilled},
    };
    return faults;
}

}  // namespace velmora::test
