// SPDX-License-Identifier: MIT
// What leaves the machine in a day of use: every byte of it, as a real server receives it.
#include <gtest/gtest.h>

#include <QCoreApplication>
#include <algorithm>
#include <map>
#include <nlohmann/json.hpp>
#include <set>
#include <string>

#include "Tests/Support/EventLoop.h"
#include "Tests/Velmora/Analytics/LoopbackHttpServer.h"
#include "Tests/Velmora/Coordination/ModelWorld.h"
#include "Velmora/Diagnostics/AnalyticsService.h"
#include "Velmora/Diagnostics/NetworkHttpPoster.h"

namespace velmora::test {
namespace {

using testing::ModelWorld;
using testing::waitUntil;

/// Texts that somebody reads, with words of theirs in Latin letters that occur nowhere else.
const std::vector<std::string> readTexts{"知道 quokka", "中国人 zebrafish", "人知道中国 wombat",
                                         "道 narwhal"};
const std::vector<std::string> secrets{"quokka", "zebrafish", "wombat", "narwhal", "zhi",
                                       "dao",    "Zhong",     "guo",    "ren2",    "gloss"};

/// Shift on a bubble that is up shows the same word a second time.
bool isPresentation(const std::string& line) {
    return line.starts_with("pinyin") || line.starts_with("dictionary") ||
           line.starts_with("selection");
}

class DayOfLookups : public ::testing::Test {
  protected:
    ProductInformation product(const std::string& token) {
        ProductInformation made;
        made.shortVersion = "1.2.3";
        made.bundleIdentifier = "com.velmora.Velmora";
        made.systemVersion = "Debian GNU/Linux 12 (bookworm)";
        made.informationValue = [](const std::string&) { return std::nullopt; };
        made.environmentValue = [this, token](const std::string& name) {
            const bool isToken = name == "VELMORA_POSTHOG_TOKEN";
            return std::optional(isToken ? token : server.address().toStdString());
        };
        return made;
    }

    void start(AnalyticsService& analytics) {
        world.startWith(world.statusBar, world.updates, analytics);
    }

    /// From the first start to the opt-out; the number of lookups that were shown.
    int live() {
        AppModel& model = *world.model;
        model.permissions().requestAccessibility();
        model.permissions().openScreenRecordingSettings();
        model.finishOnboarding(true);
        model.setHoverLookupEnabled(true);
        model.setAutoPronounce(true);
        for (int lookup = 0; lookup < 120; ++lookup) {
            const std::string& text =
                readTexts[static_cast<std::size_t>(lookup) % readTexts.size()];
            world.setShift(lookup % 3 == 0);
            world.restAt({100.0 + 40 * (lookup % 20), 100.0 + 60 * (lookup % 10)});
            const bool selection = lookup % 5 == 0;
            world.answerLast(selection ? ModelWorld::selected(text) : ModelWorld::hovered(text, 0));
            if (lookup % 7 == 0) {
                world.restAt({900, 900});
                world.answerLast(ModelWorld::hovered("quokka", 0));  // No Chinese: a miss.
                world.restAt({50, 900});
                world.answerLast(std::nullopt);
            }
            model.copyLookupDiagnostics();
            // What was sent arrives before the next word is read.
            EXPECT_TRUE(server.waitForRequests(sent()));
        }
        const int shown = static_cast<int>(std::ranges::count_if(world.journal, isPresentation));
        model.setAnalyticsEnabled(false);
        world.setShift(false);
        world.restAt({600, 400});
        world.answerLast(ModelWorld::hovered("知道", 0));
        return shown;
    }

    /// As many events as must have been sent by now.
    int sent() const { return static_cast<int>(poster.posts); }

    /// The real one, which counts.
    class CountingPoster final : public HttpPoster {
      public:
        void postJson(const std::string& url, const std::string& body, double timeout) override {
            ++posts;
            network.postJson(url, body, timeout);
        }
        NetworkHttpPoster network;
        std::size_t posts = 0;
    };

    QCoreApplication& running = testing::coreApplication();  // Before the server.
    LoopbackHttpServer server;
    CountingPoster poster;
    ModelWorld world;
};

TEST_F(DayOfLookups, NotOneCharacterOfWhatIsReadLeavesTheMachine) {
    AnalyticsService analytics(world.settings, poster, world.clock, product("token"));
    start(analytics);
    const int shown = live();
    ASSERT_TRUE(server.waitForRequests(sent()));

    const std::string bytes = server.everyByte().toStdString();
    EXPECT_TRUE(std::ranges::none_of(bytes, [](char byte) { return (byte & 0x80) != 0; }));
    EXPECT_EQ(bytes.find("\\u"), std::string::npos) << "nothing is written in another way";
    EXPECT_EQ(bytes.find('%'), std::string::npos);
    for (const std::string& secret : secrets) {
        EXPECT_EQ(bytes.find(secret), std::string::npos) << secret;
    }

    const std::set<std::string> common{
        "analytics_schema_version", "app_version", "app_build",
        "bundle_identifier",        "os_version",  "$process_person_profile"};
    const std::map<std::string, std::set<std::string>> own{
        {"velmora_analytics_enabled", {"enabled"}},
        {"velmora_app_opened",
         {"accessibility_granted", "hover_lookup_enabled", "onboarding_completed",
          "screen_recording_granted"}},
        {"velmora_hover_lookup_enabled_changed", {"enabled"}},
        {"velmora_lookup_presented", {"mode", "result_count", "source"}},
        {"velmora_onboarding_completed", {"accessibility_granted", "screen_recording_granted"}},
        {"velmora_permission_requested", {"permission", "granted", "status"}},
        {"velmora_permission_settings_opened", {"permission"}}};
    std::map<std::string, int> counts;
    for (const auto& request : server.requests()) {
        const auto body = nlohmann::json::parse(request.body.toStdString());
        EXPECT_EQ(body.size(), 5U);
        const std::string event = body.at("event");
        ASSERT_TRUE(own.contains(event)) << event;
        ++counts[event];
        std::set<std::string> names = own.at(event);
        names.insert(common.begin(), common.end());
        std::set<std::string> given;
        for (const auto& [name, value] : body.at("properties").items()) {
            given.insert(name);
        }
        EXPECT_EQ(given, names) << event;
    }
    EXPECT_GE(shown, 120);
    EXPECT_EQ(counts["velmora_lookup_presented"], shown);
    EXPECT_EQ(counts["velmora_app_opened"], 1);
    EXPECT_EQ(counts["velmora_onboarding_completed"], 1);
    EXPECT_EQ(counts["velmora_analytics_enabled"], 1);
    EXPECT_EQ(counts.size(), own.size()) << "every kind of event was sent";
    // The opt-out is the last of them, and the lookup after it is told to nobody.
    const auto last = nlohmann::json::parse(server.requests().back().body.toStdString());
    EXPECT_EQ(last.at("event"), "velmora_analytics_enabled");
    EXPECT_EQ(last.at("properties").at("enabled"), false);
}

TEST_F(DayOfLookups, WithoutATokenNothingIsSentAtAll) {
    AnalyticsService analytics(world.settings, poster, world.clock, product("  "));
    start(analytics);
    live();
    QCoreApplication::processEvents();
    EXPECT_EQ(sent(), 0);
    EXPECT_EQ(server.everyByte(), "");
}

}  // namespace
}  // namespace velmora::test
