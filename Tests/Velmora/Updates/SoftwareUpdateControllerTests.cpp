// SPDX-License-Identifier: MIT
#include "Velmora/Coordination/SoftwareUpdateController.h"

#include <gtest/gtest.h>

#include <utility>
#include <vector>

#include "Tests/Velmora/Updates/FakeUpdateWindow.h"
#include "Velmora/Platform/Recorded/ManualClock.h"
#include "Velmora/Platform/Recorded/ManualMainQueue.h"

namespace velmora::test {
namespace {

using Phase = UpdateWindowState::Phase;

class FakeFetcher final : public HttpFetcher {
  public:
    struct Pending {
        Request request;
        Progress progress;
        Completion completion;
        bool cancelled = false;
    };

    std::unique_ptr<HttpFetch> fetch(const Request& request, Progress progress,
                                     Completion completion) override {
        struct Handle : HttpFetch {
            explicit Handle(std::shared_ptr<Pending> own) : pending(std::move(own)) {}
            ~Handle() override { pending->cancelled = true; }
            std::shared_ptr<Pending> pending;
        };
        fetches.push_back(std::make_shared<Pending>(
            Pending{request, std::move(progress), std::move(completion), false}));
        return std::make_unique<Handle>(fetches.back());
    }

    void answer(std::string body, std::string entityTag = {}) {
        Answer made;
        made.body = std::move(body);
        made.entityTag = std::move(entityTag);
        fetches.back()->completion(std::move(made));
    }

    void fail(std::string error) {
        Answer made;
        made.error = std::move(error);
        fetches.back()->completion(std::move(made));
    }

    std::vector<std::shared_ptr<Pending>> fetches;
};

class FakeVerifier final : public SignatureVerifier {
  public:
    bool verify(std::string_view data, std::string_view signature,
                std::string_view key) const override {
        return signature == "signature of " + std::string(data) && key == "key";
    }
};

class FakeInstaller final : public PackageInstaller {
  public:
    bool isOwnedByPackageManager() const override { return isOwned; }
    std::string install(const std::string& package, const std::string& fileName) override {
        installed.emplace_back(fileName, package);
        return failure;
    }

    bool isOwned = false;
    std::string failure;
    std::vector<std::pair<std::string, std::string>> installed;
};

class FakeWorker final : public SerialQueue {
  public:
    const std::string& label() const override { return name; }
    void async(std::function<void()> work) override { waiting.push_back(std::move(work)); }
    void run() {
        for (const auto& work : std::exchange(waiting, {})) {
            work();
        }
    }

    std::string name = "updates";
    std::vector<std::function<void()>> waiting;
};

std::string item(const std::string& version, const std::string& package,
                 const std::string& shortVersion = {}) {
    return "<item><v>" + std::string("</v><u:version>") + version + "</u:version>" +
           (shortVersion.empty()
                ? ""
                : "<u:shortVersionString>" + shortVersion + "</u:shortVersionString>") +
           "<description>Notes of " + version +
           "</description><enclosure url=\"https://updates.example/files/velmora-" + version +
           ".deb\" length=\"" + std::to_string(package.size()) +
           "\" u:edSignature=\"signature of " + package + "\"/></item>";
}

std::string feed(const std::string& items) {
    return "<rss xmlns:u=\"u\"><channel>" + items + "</channel></rss>";
}

class SoftwareUpdateControllerTests : public testing::Test {
  protected:
    SoftwareUpdateController controller(UpdateConfiguration configuration = {
                                            "https://updates.example/feed", "key", "1.0"}) {
        return {std::move(configuration),
                {fetcher, verifier, installer, clock, window, worker, mainQueue}};
    }

    /// A feed arrives and is read.
    void answerFeed(std::string body, std::string entityTag = {}) {
        fetcher.answer(std::move(body), std::move(entityTag));
        finishWork();
    }

    void finishWork() {
        worker.run();
        mainQueue.runAll();
    }

    FakeFetcher fetcher;
    FakeVerifier verifier;
    FakeInstaller installer;
    ManualClock clock;
    FakeUpdateWindow window;
    FakeWorker worker;
    ManualMainQueue mainQueue;
};

TEST_F(SoftwareUpdateControllerTests, FetchesNothingAtStartAndThenOnceADay) {
    const auto made = controller();
    EXPECT_TRUE(fetcher.fetches.empty());
    clock.advance(60);
    ASSERT_EQ(fetcher.fetches.size(), 1U);
    EXPECT_EQ(fetcher.fetches[0]->request.url, "https://updates.example/feed");
    answerFeed(feed(""));
    clock.advance(24 * 60 * 60 - 1);
    EXPECT_EQ(fetcher.fetches.size(), 1U);
    clock.advance(1);
    EXPECT_EQ(fetcher.fetches.size(), 2U);
}

TEST_F(SoftwareUpdateControllerTests, AsksOnlyForWhatIsNewByTheEntityTag) {
    auto made = controller();
    clock.advance(60);
    EXPECT_EQ(fetcher.fetches[0]->request.entityTag, "");
    answerFeed(feed(item("2.0", "p")), "\"tag\"");
    clock.advance(24 * 60 * 60);
    EXPECT_EQ(fetcher.fetches[1]->request.entityTag, "\"tag\"");
    HttpFetcher::Answer unchanged;
    unchanged.notModified = true;
    fetcher.fetches[1]->completion(unchanged);
    EXPECT_EQ(made.availableUpdateVersion(), "2.0");
}

TEST_F(SoftwareUpdateControllerTests, PublishesTheNewestVersionByItsDisplayName) {
    auto made = controller();
    std::vector<std::optional<std::string>> seen;
    made.observeAvailableUpdateVersion([&](const auto& version) { seen.push_back(version); });
    clock.advance(60);
    answerFeed(feed(item("1.5", "a") + item("3.0", "b", "Three") + item("2.0", "c")));
    EXPECT_EQ(seen, (std::vector<std::optional<std::string>>{std::nullopt, "Three"}));
    EXPECT_FALSE(window.isShown);
}

TEST_F(SoftwareUpdateControllerTests, OffersNeitherTheSameNorAnOlderVersion) {
    auto made = controller();
    clock.advance(60);
    answerFeed(feed(item("1.0", "a") + item("0.9", "b") + item("1.0b2", "c")));
    EXPECT_EQ(made.availableUpdateVersion(), std::nullopt);
}

TEST_F(SoftwareUpdateControllerTests, ForgetsTheVersionWhenTheFeedNoLongerHasIt) {
    auto made = controller();
    clock.advance(60);
    answerFeed(feed(item("2.0", "a")));
    EXPECT_EQ(made.availableUpdateVersion(), "2.0");
    clock.advance(24 * 60 * 60);
    answerFeed(feed(""));
    EXPECT_EQ(made.availableUpdateVersion(), std::nullopt);
}

TEST_F(SoftwareUpdateControllerTests, KeepsTheVersionWhenACheckFails) {
    auto made = controller();
    clock.advance(60);
    answerFeed(feed(item("2.0", "a")));
    clock.advance(24 * 60 * 60);
    fetcher.fail("no network");
    EXPECT_EQ(made.availableUpdateVersion(), "2.0");
    clock.advance(24 * 60 * 60);
    answerFeed("<rss><chan");
    EXPECT_EQ(made.availableUpdateVersion(), "2.0");
    EXPECT_FALSE(window.isShown);
}

TEST_F(SoftwareUpdateControllerTests, SaysThatABuildWithoutFeedOrKeyHasNoUpdates) {
    for (const UpdateConfiguration& incomplete :
         {UpdateConfiguration{"", "key", "1.0"},
          UpdateConfiguration{"https://u.example", "", "1"}}) {
        auto made = controller(incomplete);
        clock.advance(3 * 24 * 60 * 60);
        made.checkForUpdates();
        EXPECT_TRUE(fetcher.fetches.empty());
        EXPECT_EQ(window.state.phase, Phase::message);
        EXPECT_EQ(window.state.message, "This build has no update feed.");
    }
}

TEST_F(SoftwareUpdateControllerTests, LeavesAPackagedCopyToItsPackageManager) {
    installer.isOwned = true;
    auto made = controller();
    clock.advance(3 * 24 * 60 * 60);
    made.checkForUpdates();
    EXPECT_TRUE(fetcher.fetches.empty());
    EXPECT_EQ(window.state.message, "Velmora is kept up to date by your package manager.");
}

TEST_F(SoftwareUpdateControllerTests, TellsTheUserWhoAskedThatAllIsNew) {
    auto made = controller();
    made.checkForUpdates();
    EXPECT_EQ(window.state.phase, Phase::checking);
    answerFeed(feed(""));
    EXPECT_EQ(window.state.phase, Phase::message);
    EXPECT_EQ(window.state.message, "Velmora 1.0 is the newest version.");
}

TEST_F(SoftwareUpdateControllerTests, TellsTheUserWhoAskedWhatWentWrong) {
    auto made = controller();
    made.checkForUpdates();
    fetcher.fail("host not found");
    EXPECT_EQ(window.state.message, "The update feed could not be read: host not found");
    made.checkForUpdates();
    answerFeed("<html/>");
    EXPECT_EQ(window.state.message, "The update feed is damaged.");
}

TEST_F(SoftwareUpdateControllerTests, InstallsAPackageThatIsGenuine) {
    auto made = controller();
    made.checkForUpdates();
    answerFeed(feed(item("2.0", "package")));
    EXPECT_EQ(window.state.phase, Phase::available);
    EXPECT_EQ(window.state.version, "2.0");
    EXPECT_EQ(window.state.releaseNotes, "Notes of 2.0");
    window.pressInstall();
    EXPECT_EQ(window.state.phase, Phase::downloading);
    EXPECT_EQ(fetcher.fetches.back()->request.mostBytes, 7);
    fetcher.fetches.back()->progress(3);
    EXPECT_NEAR(window.state.progress, 3.0 / 7, 1e-9);
    fetcher.answer("package");
    EXPECT_TRUE(installer.installed.empty()) << "nothing is verified on the main thread";
    finishWork();
    ASSERT_EQ(installer.installed.size(), 1U);
    EXPECT_EQ(installer.installed[0].first, "velmora-2.0.deb");
    EXPECT_EQ(installer.installed[0].second, "package");
    EXPECT_EQ(window.state.phase, Phase::message);
}

TEST_F(SoftwareUpdateControllerTests, ThrowsAwayWhatIsNotGenuine) {
    for (const std::string body : {"pAckage", "packag", ""}) {
        auto made = controller();
        made.checkForUpdates();
        answerFeed(feed(item("2.0", "package")));
        window.pressInstall();
        fetcher.answer(body);
        finishWork();
        EXPECT_TRUE(installer.installed.empty());
        EXPECT_EQ(window.state.message,
                  "The download is not what its maker signed. It was thrown away.");
    }
}

TEST_F(SoftwareUpdateControllerTests, SaysWhyAPackageCouldNotBeHandedOver) {
    installer.failure = "There is no installer.";
    auto made = controller();
    made.checkForUpdates();
    answerFeed(feed(item("2.0", "package")));
    window.pressInstall();
    fetcher.answer("package");
    finishWork();
    EXPECT_EQ(window.state.message, "There is no installer.");
}

TEST_F(SoftwareUpdateControllerTests, CancelsTheDownloadOnLater) {
    auto made = controller();
    made.checkForUpdates();
    answerFeed(feed(item("2.0", "package")));
    window.pressInstall();
    const auto download = fetcher.fetches.back();
    window.pressLater();
    EXPECT_TRUE(download->cancelled);
    EXPECT_FALSE(window.isShown);
}

TEST_F(SoftwareUpdateControllerTests, InstallsNothingAfterLater) {
    auto made = controller();
    made.checkForUpdates();
    answerFeed(feed(item("2.0", "package")));
    window.pressInstall();
    fetcher.answer("package");
    window.pressLater();
    finishWork();
    EXPECT_TRUE(installer.installed.empty());
}

TEST_F(SoftwareUpdateControllerTests, ACheckDuringADownloadChangesNothingOfIt) {
    for (const std::string& later : {feed(""), feed(item("3.0", "another"))}) {
        auto made = controller();
        made.checkForUpdates();
        answerFeed(feed(item("2.0", "package")));
        window.pressInstall();
        const auto download = fetcher.fetches.back();
        clock.advance(60);
        ASSERT_NE(fetcher.fetches.back(), download) << "the daily check is due";
        answerFeed(later);
        EXPECT_NE(made.availableUpdateVersion(), "2.0");
        download->progress(3);
        EXPECT_EQ(window.state.version, "2.0");
        EXPECT_NEAR(window.state.progress, 3.0 / 7, 1e-9);
        HttpFetcher::Answer whole;
        whole.body = "package";
        download->completion(whole);
        finishWork();
        EXPECT_EQ(installer.installed.back().first, "velmora-2.0.deb");
    }
    EXPECT_EQ(installer.installed.size(), 2U);
}

TEST_F(SoftwareUpdateControllerTests, InstallsWhatTheWindowOffersThoughTheFeedMovesOn) {
    auto made = controller();
    made.checkForUpdates();
    answerFeed(feed(item("2.0", "package")));
    clock.advance(60);
    answerFeed(feed(item("3.0", "another")));
    EXPECT_EQ(made.availableUpdateVersion(), "3.0");
    window.pressInstall();
    EXPECT_EQ(fetcher.fetches.back()->request.url, "https://updates.example/files/velmora-2.0.deb");
    window.pressLater();
    window.pressInstall();
    EXPECT_EQ(fetcher.fetches.size(), 3U) << "a window that is closed offers nothing";
}

TEST_F(SoftwareUpdateControllerTests, WherePackagersCountBuildsTheFeedsVersionsAreBuilds) {
    auto made = controller({"https://updates.example/feed", "key", "1.0", "120"});
    made.checkForUpdates();
    answerFeed(feed(item("119", "a", "0.9") + item("120", "b", "1.0")));
    EXPECT_EQ(window.state.message, "Velmora 1.0 is the newest version.");
    made.checkForUpdates();
    answerFeed(feed(item("121", "a", "1.1")));
    EXPECT_EQ(made.availableUpdateVersion(), "1.1");
}

TEST_F(SoftwareUpdateControllerTests, FetchesAreBoundedInSizeAndTime) {
    auto made = controller();
    made.checkForUpdates();
    EXPECT_EQ(fetcher.fetches.back()->request.mostBytes, 1 << 20);
    EXPECT_EQ(fetcher.fetches.back()->request.mostSeconds, 120);
    answerFeed(feed(item("2.0", "package")));
    window.pressInstall();
    EXPECT_EQ(fetcher.fetches.back()->request.mostBytes, 7);
    EXPECT_EQ(fetcher.fetches.back()->request.mostSeconds, 4 * 60 * 60);
}

TEST_F(SoftwareUpdateControllerTests, RefusesAPackageBeyondAllMeasure) {
    auto made = controller();
    made.checkForUpdates();
    answerFeed(
        feed("<item><u:version>2</u:version><enclosure url=\"https://u.example/p\" "
             "length=\"99999999999\" u:edSignature=\"s\"/></item>"));
    window.pressInstall();
    EXPECT_EQ(fetcher.fetches.size(), 1U);
    EXPECT_EQ(window.state.message, "The update is too large.");
}

}  // namespace
}  // namespace velmora::test
