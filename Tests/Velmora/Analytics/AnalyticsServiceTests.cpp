// SPDX-License-Identifier: MIT
#include "Velmora/Diagnostics/AnalyticsService.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <nlohmann/json.hpp>

#include "Tests/Velmora/Analytics/LoopbackHttpServer.h"
#include "Velmora/Diagnostics/NetworkHttpPoster.h"
#include "Velmora/Platform/Recorded/ManualClock.h"
#include "Velmora/Platform/Recorded/MemorySettings.h"

namespace velmora::test {
namespace {

/// Keeps what would be sent.
class RecordingPoster final : public HttpPoster {
  public:
    struct Post {
        std::string url;
        nlohmann::json body;
        double timeout = 0;
    };

    void postJson(const std::string& url, const std::string& body, double timeoutSeconds) override {
        posts.push_back({url, nlohmann::json::parse(body), timeoutSeconds});
    }

    std::vector<Post> posts;
};

class AnalyticsServiceTests : public testing::Test {
  protected:
    AnalyticsServiceTests() {
        product.shortVersion = "1.2.3";
        product.bundleIdentifier = "com.velmora.Velmora";
        product.systemVersion = "Debian GNU/Linux 12 (bookworm)";
        product.environmentValue = [this](const std::string& name) {
            return look(environment, name);
        };
        product.informationValue = [this](const std::string& key) {
            return look(information, key);
        };
    }

    static std::optional<std::string> look(const std::map<std::string, std::string>& values,
                                           const std::string& name) {
        const auto found = values.find(name);
        return found == values.end() ? std::nullopt : std::optional(found->second);
    }

    AnalyticsService service() { return {settings, poster, clock, product}; }

    AnalyticsService configuredService() {
        environment["VELMORA_POSTHOG_TOKEN"] = "token";
        environment["VELMORA_POSTHOG_HOST"] = "https://events.example";
        AnalyticsService made = service();
        made.configure();
        return made;
    }

    std::map<std::string, std::string> environment;
    std::map<std::string, std::string> information;
    MemorySettings settings;
    RecordingPoster poster;
    ManualClock clock;
    ProductInformation product;
};

TEST_F(AnalyticsServiceTests, MakesNoRequestWithoutAToken) {
    AnalyticsService made = service();
    made.configure();
    made.capture(AnalyticsEvent::appOpened, {});
    made.setEnabled(false);
    made.setEnabled(true);
    EXPECT_TRUE(poster.posts.empty());
}

TEST_F(AnalyticsServiceTests, TakesATokenOfOnlyBlanksForNone) {
    environment["VELMORA_POSTHOG_TOKEN"] = " \t\n ";
    AnalyticsService made = service();
    made.configure();
    made.capture(AnalyticsEvent::appOpened, {});
    EXPECT_TRUE(poster.posts.empty());
}

TEST_F(AnalyticsServiceTests, PrefersTheEnvironmentOverTheBuildAndTrimsBoth) {
    environment["VELMORA_POSTHOG_TOKEN"] = "   ";
    information["VELMORA_POSTHOG_TOKEN"] = " built-in\n";
    information["VELMORA_POSTHOG_HOST"] = "https://built.example";
    environment["VELMORA_POSTHOG_HOST"] = " https://environment.example ";
    AnalyticsService made = service();
    made.configure();
    made.capture(AnalyticsEvent::appOpened, {});
    ASSERT_EQ(poster.posts.size(), 1U);
    EXPECT_EQ(poster.posts[0].url, "https://environment.example/i/v0/e/");
    EXPECT_EQ(poster.posts[0].body["api_key"], "built-in");
}

TEST_F(AnalyticsServiceTests, ReadsItsConfigurationOnce) {
    AnalyticsService made = service();
    made.configure();
    environment["VELMORA_POSTHOG_TOKEN"] = "late";
    made.configure();
    made.capture(AnalyticsEvent::appOpened, {});
    EXPECT_TRUE(poster.posts.empty());
}

TEST_F(AnalyticsServiceTests, DoesNothingBeforeItIsConfigured) {
    environment["VELMORA_POSTHOG_TOKEN"] = "token";
    AnalyticsService made = service();
    made.capture(AnalyticsEvent::appOpened, {});
    EXPECT_TRUE(poster.posts.empty());
}

TEST_F(AnalyticsServiceTests, HasAHostOfItsOwn) {
    environment["VELMORA_POSTHOG_TOKEN"] = "token";
    AnalyticsService made = service();
    made.configure();
    made.capture(AnalyticsEvent::appOpened, {});
    ASSERT_EQ(poster.posts.size(), 1U);
    EXPECT_TRUE(poster.posts[0].url.starts_with("https://"));
    EXPECT_TRUE(poster.posts[0].url.ends_with("/i/v0/e/"));
}

TEST(AnalyticsEndpoint, IsTheSameWithAndWithoutSlashes) {
    EXPECT_EQ(AnalyticsService::endpointUrl("https://events.example/"),
              "https://events.example/i/v0/e/");
    EXPECT_EQ(AnalyticsService::endpointUrl(" //https://events.example// \n"),
              "https://events.example/i/v0/e/");
    EXPECT_EQ(AnalyticsService::endpointUrl("https://events.example"),
              "https://events.example/i/v0/e/");
}

TEST(AnalyticsEndpoint, KeepsPathPortUserAndNumericAddresses) {
    EXPECT_EQ(AnalyticsService::endpointUrl("https://events.example/proxy/"),
              "https://events.example/proxy/i/v0/e/");
    EXPECT_EQ(AnalyticsService::endpointUrl("http://[::1]:8080"), "http://[::1]:8080/i/v0/e/");
    EXPECT_EQ(AnalyticsService::endpointUrl("https://user@events.example"),
              "https://user@events.example/i/v0/e/");
}

TEST(AnalyticsEndpoint, RefusesWhatIsNoWebAddress) {
    for (const char* host : {"", "   ", "///", "events.example", "https://", "https://two words",
                             "ftp://events.example", "file:///etc", "https://[::1"}) {
        EXPECT_EQ(AnalyticsService::endpointUrl(host), std::nullopt) << host;
    }
}

TEST_F(AnalyticsServiceTests, SendsTheCommonPropertiesWithEveryEvent) {
    AnalyticsService made = configuredService();
    made.capture(
        AnalyticsEvent::lookupPresented,
        {{"mode", "pinyin"}, {"result_count", std::int64_t{3}}, {"source", "selected_text"}});
    ASSERT_EQ(poster.posts.size(), 1U);
    const nlohmann::json expected = {
        {"analytics_schema_version", 1},
        {"app_version", "1.2.3"},
        {"app_build", "dev"},
        {"bundle_identifier", "com.velmora.Velmora"},
        {"os_version", "Debian GNU/Linux 12 (bookworm)"},
        {"$process_person_profile", false},
        {"mode", "pinyin"},
        {"result_count", 3},
        {"source", "selected_text"},
    };
    const nlohmann::json& body = poster.posts[0].body;
    EXPECT_EQ(body["properties"], expected);
    EXPECT_EQ(body["event"], "velmora_lookup_presented");
    EXPECT_EQ(body.size(), 5U);
    EXPECT_EQ(poster.posts[0].timeout, 60);
}

TEST_F(AnalyticsServiceTests, NamesWhatItDoesNotKnow) {
    product.shortVersion.reset();
    product.bundleIdentifier.reset();
    AnalyticsService made = configuredService();
    made.capture(AnalyticsEvent::appOpened, {});
    EXPECT_EQ(poster.posts[0].body["properties"]["app_version"], "dev");
    EXPECT_EQ(poster.posts[0].body["properties"]["bundle_identifier"], "unknown");
}

TEST_F(AnalyticsServiceTests, LetsTheCallersValueWin) {
    AnalyticsService made = configuredService();
    made.capture(AnalyticsEvent::appOpened, {{"app_version", "mine"}});
    EXPECT_EQ(poster.posts[0].body["properties"]["app_version"], "mine");
}

TEST_F(AnalyticsServiceTests, SendsTheOptOutAsItsLastEvent) {
    AnalyticsService made = configuredService();
    made.setEnabled(false);
    made.setEnabled(false);
    made.capture(AnalyticsEvent::appOpened, {});
    ASSERT_EQ(poster.posts.size(), 1U);
    EXPECT_EQ(poster.posts[0].body["event"], "velmora_analytics_enabled");
    EXPECT_EQ(poster.posts[0].body["properties"]["enabled"], false);
    EXPECT_EQ(settings.boolean("analyticsEnabled"), false);

    made.setEnabled(true);
    ASSERT_EQ(poster.posts.size(), 2U);
    EXPECT_EQ(poster.posts[1].body["properties"]["enabled"], true);
    EXPECT_EQ(settings.boolean("analyticsEnabled"), true);
}

TEST_F(AnalyticsServiceTests, IsSwitchedOnWhereTheUserHasNotChosen) {
    EXPECT_TRUE(service().isEnabled());
    settings.setBoolean("analyticsEnabled", false);
    EXPECT_FALSE(service().isEnabled());
}

TEST_F(AnalyticsServiceTests, KeepsTheInstallationIdentifier) {
    AnalyticsService first = configuredService();
    first.capture(AnalyticsEvent::appOpened, {});
    AnalyticsService second = configuredService();
    second.capture(AnalyticsEvent::appOpened, {});
    const std::string id = poster.posts[0].body["distinct_id"];
    EXPECT_EQ(poster.posts[1].body["distinct_id"], id);
    EXPECT_EQ(settings.text("analyticsAnonymousInstallID"), id);
    EXPECT_EQ(id.size(), 36U);
    EXPECT_EQ(id.find_first_of("abcdef"), std::string::npos);
}

TEST_F(AnalyticsServiceTests, MakesANewIdentifierForAnEmptyOne) {
    settings.setText("analyticsAnonymousInstallID", "");
    configuredService().capture(AnalyticsEvent::appOpened, {});
    EXPECT_EQ(poster.posts[0].body["distinct_id"].get<std::string>().size(), 36U);
}

TEST_F(AnalyticsServiceTests, DropsAnEventWhosePropertiesAreNotText) {
    configuredService().capture(AnalyticsEvent::appOpened, {{"broken", std::string("\xff\xfe")}});
    EXPECT_TRUE(poster.posts.empty());
}

TEST(AnalyticsTimestamp, IsUtcWithoutFractions) {
    EXPECT_EQ(AnalyticsService::timestamp(1738311300.75), "2025-01-31T08:15:00Z");
    EXPECT_EQ(AnalyticsService::timestamp(0), "1970-01-01T00:00:00Z");
}

class AnalyticsOverTheNetwork : public AnalyticsServiceTests {
  protected:
    QCoreApplication& application() {
        static int count = 1;
        static char name[] = "analytics_tests";
        static char* arguments[] = {name, nullptr};
        static QCoreApplication instance(count, arguments);
        return instance;
    }

    AnalyticsService networkService(const LoopbackHttpServer& server) {
        environment["VELMORA_POSTHOG_TOKEN"] = "token";
        environment["VELMORA_POSTHOG_HOST"] = server.address().toStdString();
        AnalyticsService made(settings, network, clock, product);
        made.configure();
        return made;
    }

    QCoreApplication& running = application();
    NetworkHttpPoster network;
};

TEST_F(AnalyticsOverTheNetwork, PostsJson) {
    const LoopbackHttpServer server;
    networkService(server).capture(AnalyticsEvent::hoverLookupEnabledChanged, {{"enabled", true}});
    ASSERT_TRUE(server.waitForRequests(1));
    const auto& request = server.requests()[0];
    EXPECT_EQ(request.requestLine, "POST /i/v0/e/ HTTP/1.1");
    EXPECT_EQ(request.headers["content-type"], "application/json");
    const auto body = nlohmann::json::parse(request.body.toStdString());
    EXPECT_EQ(body["event"], "velmora_hover_lookup_enabled_changed");
}

TEST_F(AnalyticsOverTheNetwork, DoesNotTryAgainAfterAnError) {
    const LoopbackHttpServer server(LoopbackHttpServer::Answer::serverError);
    AnalyticsService made = networkService(server);
    made.capture(AnalyticsEvent::appOpened, {});
    ASSERT_TRUE(server.waitForRequests(1));
    made.capture(AnalyticsEvent::lookupPresented, {});
    ASSERT_TRUE(server.waitForRequests(2));
    EXPECT_EQ(server.requests().size(), 2);
}

TEST_F(AnalyticsOverTheNetwork, CutsOffAnEndlessAnswer) {
    const LoopbackHttpServer server(LoopbackHttpServer::Answer::endless);
    AnalyticsService made = networkService(server);
    // More events than may be under way at once: all arrive, because none waits for its end.
    for (int event = 0; event < 40; ++event) {
        made.capture(AnalyticsEvent::appOpened, {});
        ASSERT_TRUE(server.waitForRequests(event + 1));
        QCoreApplication::processEvents();
    }
}

TEST_F(AnalyticsOverTheNetwork, BoundsWhatASilentServerKeepsWaiting) {
    const LoopbackHttpServer server(LoopbackHttpServer::Answer::silence);
    AnalyticsService made = networkService(server);
    for (int event = 0; event < 500; ++event) {
        made.capture(AnalyticsEvent::appOpened, {});
    }
    EXPECT_FALSE(QCoreApplication::closingDown());
    EXPECT_EQ(network.underWay(), 32);
}

}  // namespace
}  // namespace velmora::test
