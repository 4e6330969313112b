// SPDX-License-Identifier: MIT
#include "Velmora/Platform/Linux/StatusNotifier/StatusNotifierItem.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QDBusConnectionInterface>
#include <QDBusMetaType>
#include <memory>
#include <string>
#include <vector>

#include "Tests/Contracts/StatusNotifier/TrayHost.h"
#include "Tests/Contracts/StatusNotifier/TrayWatcher.h"
#include "Tests/Support/EventLoop.h"
#include "Tests/Support/PrivateBus.h"
#include "Velmora/Platform/Linux/StatusNotifier/BusPicture.h"
#include "Velmora/Platform/Linux/StatusNotifier/BusToolTip.h"
#include "Velmora/Platform/Linux/StatusNotifier/MenuSession.h"
#include "Velmora/Platform/Linux/StatusNotifier/TrayHostWatch.h"
#include "Velmora/Platform/Recorded/ManualClock.h"

namespace velmora {
namespace {

using ::testing::ElementsAre;
using testing::TrayHost;
using testing::TrayWatcher;
using testing::waitUntil;

class RecordedDelegate final : public StatusItemDelegate {
  public:
    std::vector<MenuItem> menuNeedsUpdate() override {
        ++updates;
        return items;
    }
    void menuWillOpen() override { open = true; }
    void menuDidClose() override { open = false; }

    std::vector<MenuItem> items;
    int updates = 0;
    bool open = false;
};

/// One bus for the process: the session bus of a process stays the one that it met first.
testing::PrivateBus& privateBus() {
    testing::coreApplication();
    static testing::PrivateBus bus;
    return bus;
}

class StatusNotifierItemTest : public ::testing::Test {
  protected:
    StatusNotifierItemTest() {
        qDBusRegisterMetaType<BusMenuEvent>();
        qDBusRegisterMetaType<BusMenuEvents>();
        MenuItem hover = MenuItem::command("Hover lookup", [this] { chosen = "hover"; });
        hover.checkable = true;
        hover.checked = true;
        MenuItem recent;
        recent.title = "Recent";
        recent.children = {MenuItem::command("知道  zhī dào", [this] { chosen = "recent"; })};
        delegate.items = {hover, MenuItem::note("Live: snake_case"), MenuItem::separator(), recent,
                          MenuItem::command("Quit Velmora", [this] { chosen = "quit"; })};
    }

    void show() {
        item.show({.toolTip = "Velmora",
                   .accessibilityLabel = "Velmora",
                   .icon = {{.width = 2, .height = 1, .pixels = {0x01020304U, 0xFFFFFFFFU}}}},
                  delegate);
    }
    /// With a watcher that has heard of the item, and a host.
    void start() {
        ASSERT_TRUE(watcher.appear());
        show();
        ASSERT_TRUE(waitUntil([this] { return !watcher.registered.isEmpty(); }));
        host = std::make_unique<TrayHost>(QStringLiteral("host"), watcher.registered.constFirst());
    }
    int idOf(const char* label) {
        const BusMenuNode layout = host->layout();
        const BusMenuNode* const found = TrayHost::find(layout, QString::fromUtf8(label));
        return found != nullptr ? found->id : -1;
    }

    testing::PrivateBus& bus = privateBus();  // Before all that connects to it.
    ManualClock clock;
    TrayWatcher watcher;
    RecordedDelegate delegate;
    std::string chosen;
    StatusNotifierItem item{clock};
    std::unique_ptr<TrayHost> host;
};

TEST_F(StatusNotifierItemTest, TellsWhatHostsShow) {
    start();
    EXPECT_EQ(host->itemProperty("Title").toString(), QStringLiteral("Velmora"));
    EXPECT_EQ(host->itemProperty("Id").toString(), QStringLiteral("com.velmora.Velmora"));
    EXPECT_EQ(host->itemProperty("Category").toString(), QStringLiteral("ApplicationStatus"));
    EXPECT_EQ(host->itemProperty("Status").toString(), QStringLiteral("Active"));
    EXPECT_EQ(host->itemProperty("IconAccessibleDesc").toString(), QStringLiteral("Velmora"));
    EXPECT_TRUE(host->itemProperty("ItemIsMenu").toBool());
    EXPECT_EQ(host->itemProperty("Menu").value<QDBusObjectPath>().path(),
              QStringLiteral("/StatusNotifierItem/Menu"));
    EXPECT_EQ(qdbus_cast<BusToolTip>(host->itemProperty("ToolTip")).title,
              QStringLiteral("Velmora"));
    const auto icon = qdbus_cast<BusPictures>(host->itemProperty("IconPixmap"));
    ASSERT_EQ(icon.size(), 1);
    EXPECT_EQ(icon[0].width, 2);
    EXPECT_EQ(icon[0].height, 1);
    EXPECT_EQ(icon[0].bytes.toHex(), QByteArray("01020304ffffffff"));
}

TEST_F(StatusNotifierItemTest, AHostThatActivatesIsToldThatTheItemIsItsMenu) {
    start();
    const auto reply =
        host->call("/StatusNotifierItem", "org.kde.StatusNotifierItem", "Activate", {5, 5});
    EXPECT_EQ(reply.type(), QDBusMessage::ErrorMessage);
}

TEST_F(StatusNotifierItemTest, TheLayoutHoldsTextsAndStates) {
    start();
    host->aboutToShow();
    const BusMenuNode root = host->layout();
    EXPECT_THAT(TrayHost::labels(root),
                ElementsAre("Hover lookup", "Live: snake__case", "-", "Recent", "Quit Velmora"));
    const QVariantMap hover = root.children[0].properties;
    EXPECT_EQ(hover.value(QStringLiteral("toggle-type")), QStringLiteral("checkmark"));
    EXPECT_EQ(hover.value(QStringLiteral("toggle-state")), 1);
    EXPECT_EQ(root.children[1].properties.value(QStringLiteral("enabled")), false);
    EXPECT_EQ(root.children[3].properties.value(QStringLiteral("children-display")),
              QStringLiteral("submenu"));
    EXPECT_THAT(TrayHost::labels(root.children[3]), ElementsAre("知道  zhī dào"));
}

TEST_F(StatusNotifierItemTest, AnswersOnlyAsDeepAndAsMuchAsAsked) {
    start();
    const BusMenuNode flat = host->layout(0, 1, {QStringLiteral("label")});
    ASSERT_EQ(flat.children.size(), 5);
    EXPECT_TRUE(flat.children[3].children.isEmpty());
    EXPECT_EQ(flat.children[0].properties.keys(), QStringList{QStringLiteral("label")});
    EXPECT_TRUE(host->layout(0, 0).children.isEmpty());
    EXPECT_EQ(TrayHost::labels(host->layout(idOf("Recent"))).size(), 1U);
}

TEST_F(StatusNotifierItemTest, AnswersForSingleEntries) {
    start();
    const int quit = idOf("Quit Velmora");
    const auto group = qdbus_cast<BusMenuPropertiesList>(
        host->menu("GetGroupProperties",
                   {QVariant::fromValue(QList<int>{quit, quit, 9999, -4}), QStringList()})
            .arguments()
            .value(0));
    ASSERT_EQ(group.size(), 1);
    EXPECT_EQ(group[0].properties.value(QStringLiteral("label")), QStringLiteral("Quit Velmora"));
    EXPECT_EQ(host->menu("GetProperty", {quit, QStringLiteral("label")})
                  .arguments()
                  .value(0)
                  .value<QDBusVariant>()
                  .variant(),
              QStringLiteral("Quit Velmora"));
    EXPECT_EQ(host->menu("GetProperty", {quit, QStringLiteral("colour")}).type(),
              QDBusMessage::ErrorMessage);
}

TEST_F(StatusNotifierItemTest, AClickRunsTheEntry) {
    start();
    host->event(idOf("Quit Velmora"), "clicked");
    EXPECT_EQ(host->lastEvent.type(), QDBusMessage::ReplyMessage);
    EXPECT_TRUE(waitUntil([this] { return chosen == "quit"; }));
    host->event(idOf("知道  zhī dào"), "clicked");
    EXPECT_TRUE(waitUntil([this] { return chosen == "recent"; }));
}

TEST_F(StatusNotifierItemTest, ClicksThatComeInGroupsRunToo) {
    start();
    const BusMenuEvents events{{.id = 9999, .name = QStringLiteral("clicked")},
                               {.id = idOf("Hover lookup"), .name = QStringLiteral("clicked")}};
    const auto reply = host->menu("EventGroup", {QVariant::fromValue(events)});
    EXPECT_EQ(reply.errorMessage().toStdString(), "");
    EXPECT_EQ(qdbus_cast<QList<int>>(reply.arguments().value(0)), QList<int>{9999});
    EXPECT_TRUE(waitUntil([this] { return chosen == "hover"; }));
}

TEST_F(StatusNotifierItemTest, AsksInGroupsAreAnsweredToo) {
    start();
    const auto reply =
        host->menu("AboutToShowGroup", {QVariant::fromValue(QList<int>{0, 9999, 9999})});
    EXPECT_EQ(qdbus_cast<QList<int>>(reply.arguments().value(0)), QList<int>{0});
    EXPECT_EQ(qdbus_cast<QList<int>>(reply.arguments().value(1)), QList<int>{9999});
}

TEST_F(StatusNotifierItemTest, UnknownEntriesAndEventsDoNothing) {
    start();
    for (const int id : {9999, -1, 2147483647}) {
        host->event(id, "clicked");
        EXPECT_EQ(host->lastEvent.type(), QDBusMessage::ErrorMessage);
    }
    host->event(idOf("Live: snake__case"), "clicked");
    host->event(idOf("Quit Velmora"), "hovered");
    host->event(0, "clicked");
    EXPECT_EQ(host->menu("GetLayout", {77, -1, QStringList()}).type(), QDBusMessage::ErrorMessage);
    EXPECT_EQ(chosen, "");
    EXPECT_FALSE(delegate.open);
}

TEST_F(StatusNotifierItemTest, TheMenuIsMadeAnewWhenItIsAboutToShow) {
    start();
    host->aboutToShow();
    const int before = idOf("Quit Velmora");
    const uint revision = host->revision;
    EXPECT_FALSE(host->aboutToShow());
    delegate.items.push_back(MenuItem::note("new"));
    EXPECT_TRUE(host->aboutToShow());
    EXPECT_NE(idOf("new"), -1);
    EXPECT_NE(idOf("Quit Velmora"), before);
    EXPECT_GT(host->revision, revision);
    host->event(before, "clicked");  // As a host does that still shows the old one.
    EXPECT_TRUE(waitUntil([this] { return chosen == "quit"; }));
}

TEST_F(StatusNotifierItemTest, BlocksFromOpenedToClosed) {
    start();
    host->aboutToShow();
    host->event(0, "opened");
    EXPECT_TRUE(delegate.open);
    host->event(0, "closed");
    EXPECT_FALSE(delegate.open);
    host->aboutToShow();  // A host that is known to tell more.
    EXPECT_FALSE(delegate.open);
}

TEST_F(StatusNotifierItemTest, AHostWithoutClosedBlocksUntilThePressOrTheClick) {
    start();
    host->event(0, "opened");
    item.mousePressedSomewhere();
    EXPECT_FALSE(delegate.open);
    host->event(0, "opened");
    EXPECT_TRUE(delegate.open);
    host->event(idOf("Quit Velmora"), "clicked");
    EXPECT_FALSE(delegate.open);
}

TEST_F(StatusNotifierItemTest, AHostThatOnlyAsksBlocksForAWhile) {
    start();
    host->aboutToShow();
    EXPECT_TRUE(delegate.open);
    clock.advance(MenuSession::askedLimit + 1);
    EXPECT_FALSE(delegate.open);
}

TEST_F(StatusNotifierItemTest, PrefetchingBlocksOnceAtMost) {
    start();
    host->aboutToShow();
    clock.advance(MenuSession::askedLimit + 1);
    for (int round = 0; round < 20; ++round) {
        host->aboutToShow();
        host->layout();
        EXPECT_FALSE(delegate.open);
        clock.advance(1);
    }
}

TEST_F(StatusNotifierItemTest, AHostThatDiesWhileTheMenuIsOpenUnblocks) {
    start();
    host->event(0, "opened");
    ASSERT_TRUE(delegate.open);
    host.reset();
    EXPECT_TRUE(waitUntil([this] { return !delegate.open; }));
}

TEST_F(StatusNotifierItemTest, NobodyElseCanSayThatTheHostLeft) {
    start();
    host->event(0, "opened");
    auto liar = TrayWatcher::connection(QStringLiteral("liar"));
    QDBusMessage lie = QDBusMessage::createSignal(QStringLiteral("/org/freedesktop/DBus"),
                                                  QStringLiteral("org.freedesktop.DBus"),
                                                  QStringLiteral("NameOwnerChanged"));
    lie << TrayWatcher::connection(QStringLiteral("host")).baseService()
        << TrayWatcher::connection(QStringLiteral("host")).baseService() << QString();
    liar.send(lie);
    TrayHost second(QStringLiteral("second"), watcher.registered.constFirst());
    second.layout();  // What was sent before it has arrived by now.
    EXPECT_TRUE(delegate.open);
    QDBusConnection::disconnectFromBus(QStringLiteral("liar"));
}

TEST_F(StatusNotifierItemTest, RegistersWithAWatcherThatComesLater) {
    show();
    TrayHost early(QStringLiteral("early"), QDBusConnection::sessionBus().baseService());
    early.layout();
    EXPECT_TRUE(watcher.registered.isEmpty());
    ASSERT_TRUE(watcher.appear());
    EXPECT_TRUE(waitUntil([this] { return watcher.registered.size() == 1; }));
}

TEST_F(StatusNotifierItemTest, RegistersAgainWithAWatcherThatRestarts) {
    start();
    watcher.leave();
    ASSERT_TRUE(watcher.appear());
    EXPECT_TRUE(waitUntil([this] { return watcher.registered.size() == 2; }));
    EXPECT_EQ(watcher.registered[0], watcher.registered[1]);
    EXPECT_FALSE(host->layout().children.isEmpty());
}

TEST_F(StatusNotifierItemTest, AWatcherThatLiesOrKeepsSilentDoesNoHarm) {
    for (const auto answer : {TrayWatcher::Answer::error, TrayWatcher::Answer::nonsense,
                              TrayWatcher::Answer::silence}) {
        watcher.answer = answer;
        watcher.registered.clear();
        start();
        host->event(idOf("Quit Velmora"), "clicked");
        EXPECT_TRUE(waitUntil([this] { return chosen == "quit"; }));
        chosen.clear();
        host.reset();
        item.hide();
        watcher.leave();
    }
}

TEST_F(StatusNotifierItemTest, HidingEndsTheMenuAndLeavesTheBus) {
    start();
    host->event(0, "opened");
    ASSERT_TRUE(delegate.open);
    item.hide();
    EXPECT_FALSE(delegate.open);
    EXPECT_EQ(host->menu("GetLayout", {0, -1, QStringList()}).type(), QDBusMessage::ErrorMessage);
}

TEST_F(StatusNotifierItemTest, TellsHostsWhatIsDifferentInAnOpenMenu) {
    start();
    host->aboutToShow();
    host->event(0, "opened");
    const int live = idOf("Live: snake__case");
    delegate.items[1] = MenuItem::note("Live: off");
    item.menuChanged();
    EXPECT_EQ(idOf("Live: off"), live);
}

class TrayHostWatchTest : public StatusNotifierItemTest {
  protected:
    void watch() {
        hosts = std::make_unique<TrayHostWatch>([this](bool isThere) { told.push_back(isThere); });
        EXPECT_TRUE(told.empty());
    }
    bool comesToBe(const std::vector<bool>& expected) {
        return waitUntil([&] { return told == expected; });
    }

    std::vector<bool> told;
    std::unique_ptr<TrayHostWatch> hosts;
};

TEST_F(TrayHostWatchTest, WithoutAWatcherThereIsNoHostUntilOneComes) {
    watch();
    EXPECT_TRUE(comesToBe({false}));
    ASSERT_TRUE(watcher.appear());
    EXPECT_TRUE(comesToBe({false, true}));
    watcher.leave();
    EXPECT_TRUE(comesToBe({false, true, false}));
}

TEST_F(TrayHostWatchTest, AWatcherWithoutAHostShowsNothing) {
    watcher.hostRegistered = false;
    ASSERT_TRUE(watcher.appear());
    watch();
    EXPECT_TRUE(comesToBe({false}));
    watcher.setHostRegistered(true);
    EXPECT_TRUE(comesToBe({false, true}));
    watcher.setHostRegistered(false);
    EXPECT_TRUE(comesToBe({false, true, false}));
}

TEST_F(TrayHostWatchTest, AWatcherThatLiesOrKeepsSilentHasNoHost) {
    for (const auto answer : {TrayWatcher::Answer::error, TrayWatcher::Answer::nonsense,
                              TrayWatcher::Answer::silence}) {
        watcher.answer = answer;
        ASSERT_TRUE(watcher.appear());
        told.clear();
        watch();
        EXPECT_TRUE(comesToBe({false})) << static_cast<int>(answer);
        hosts.reset();
        watcher.leave();
    }
}

TEST_F(TrayHostWatchTest, AFloodOfSignalsMakesFewQuestions) {
    watcher.answer = TrayWatcher::Answer::silence;
    ASSERT_TRUE(watcher.appear());
    watch();
    EXPECT_TRUE(waitUntil([&] { return watcher.questions == 1; }));
    for (int signal = 0; signal < 500; ++signal) {
        watcher.setHostRegistered(true);
    }
    // Once the watch has given up waiting for the first answer it asks for all of them together.
    watcher.answer = TrayWatcher::Answer::honest;
    EXPECT_TRUE(comesToBe({true}));
    EXPECT_LE(watcher.questions, 4);
}

TEST_F(TrayHostWatchTest, NobodyElseCanSayThatTheWatcherLeft) {
    ASSERT_TRUE(watcher.appear());
    watch();
    EXPECT_TRUE(comesToBe({true}));
    auto liar = TrayWatcher::connection(QStringLiteral("liar"));
    QDBusMessage lie = QDBusMessage::createSignal(QStringLiteral("/org/freedesktop/DBus"),
                                                  QStringLiteral("org.freedesktop.DBus"),
                                                  QStringLiteral("NameOwnerChanged"));
    lie << QStringLiteral("org.kde.StatusNotifierWatcher") << liar.baseService() << QString();
    liar.send(lie);
    // The bus has passed the lie on once it answers.
    EXPECT_TRUE(liar.interface()->isServiceRegistered(liar.baseService()));
    const int asked = watcher.questions;
    watcher.setHostRegistered(true);
    EXPECT_TRUE(waitUntil([&] { return watcher.questions > asked; }));
    EXPECT_EQ(told, (std::vector<bool>{true}));
    QDBusConnection::disconnectFromBus(QStringLiteral("liar"));
}

}  // namespace
}  // namespace velmora
