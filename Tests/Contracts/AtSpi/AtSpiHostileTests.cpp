// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/resource.h>

#include "Tests/Contracts/AtSpi/AtSpiBench.h"
#include "Tests/Support/TextCapture/ExtractionStage.h"
#include "Velmora/Platform/Linux/AtSpi/AtSpiBudget.h"
#include "Velmora/Platform/Linux/AtSpi/AtSpiService.h"

// Programs that lie about their elements, one way each. Every one of them first answers rightly and
// is read, so that a test that reads nothing afterwards has seen the lie and not a program that was
// never there.
namespace velmora::test {
namespace {

constexpr const char* content = "我们在学习中文词典";
constexpr double screenHeight = 1000;
constexpr std::chrono::milliseconds overdraft{1000};  // A busy machine wakes threads up late.
static_assert(AtSpiBudget::perQuery == std::chrono::milliseconds(300));
static_assert(AtSpiBudget::perCall == std::chrono::milliseconds(200));
static_assert(AtSpiBudget::forMainThread == std::chrono::milliseconds(20));
constexpr long mostGrowth = 1024L * 1024;  // kB: some copies of the largest message.

long greatestMemory() {
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return usage.ru_maxrss;
}

class AtSpiHostile : public testing::Test {
  protected:
    static void SetUpTestSuite() {
        bench = std::make_unique<AtSpiBench>();
        neighbour = startAt("honest", {850, 100, 600, 300}).second;
    }
    static void TearDownTestSuite() { bench.reset(); }

    /// The program, and a point on 习 in its text (capture space).
    static std::pair<ChildProcess*, Point> startAt(const std::string& mode, const Rect& place) {
        ChildProcess& program = bench->desktop().launch(
            {std::string(VELMORA_BUILD_FOLDER) + "/velmora_hostile_program", mode});
        const auto window = bench->desktop().waitForWindowOf(program);
        bench->desktop().placeWindow(window.id, place);
        Rect client;
        for (const auto& each : bench->desktop().windows()) {
            client = each.id == window.id ? each.client : client;
        }
        return {&program, {client.x + 40 + 20 * 4 + 10, client.y + 40 + 12}};
    }

    static std::optional<TextProbe> extractAt(Point capture) {
        ExtractionServices services = ExtractionStage().services();
        services.accessibility =
            std::shared_ptr<AccessibilitySystem>(std::shared_ptr<void>(), &bench->system());
        return AccessibilityTextExtractor::create(services)->extract(
            {capture.x, screenHeight - capture.y}, {}, nullptr);
    }

    static bool readsRightly(Point capture) {
        const std::optional<TextProbe> probe = extractAt(capture);
        return probe && probe->text == content && probe->hoveredCharacterOffset == 4;
    }

    static void expectWithinTime() {
        const auto left = bench->system().timeLeft();
        ASSERT_TRUE(left.has_value());
        EXPECT_GE(*left, -overdraft);
    }

    static std::unique_ptr<AtSpiBench> bench;
    static Point neighbour;
};

std::unique_ptr<AtSpiBench> AtSpiHostile::bench;
Point AtSpiHostile::neighbour;

class AtSpiHostileLies : public AtSpiHostile, public testing::WithParamInterface<const char*> {};

TEST_P(AtSpiHostileLies, harmsNobody) {
    const auto [program, point] = startAt(GetParam(), {100, 100, 600, 300});
    const Point place = point;
    ASSERT_TRUE(bench->desktop().waitUntil([&] { return readsRightly(place); }));
    ASSERT_TRUE(bench->desktop().waitUntil([&] { return readsRightly(neighbour); }));

    const long before = greatestMemory();
    program->signalAll(SIGUSR1);
    for (int round = 0; round < 3; ++round) {
        const std::optional<TextProbe> probe = extractAt(place);
        expectWithinTime();
        if (probe) {
            EXPECT_LE(probe->text.size(), 100000U);
            EXPECT_TRUE(!probe->anchorRect || probe->anchorRect->isFinite());
        }
        // Another program is read at once whatever this one does.
        EXPECT_TRUE(readsRightly(neighbour)) << "after round " << round;
    }
    EXPECT_LE(greatestMemory() - before, mostGrowth);
    bench->desktop().stop(*program);
    EXPECT_TRUE(readsRightly(neighbour));
}

INSTANTIATE_TEST_SUITE_P(AtSpi, AtSpiHostileLies,
                         testing::Values("wrongTypes", "emptyReplies", "cyclicParents",
                                         "endlessParents", "endlessChildren", "manyChildren",
                                         "hugeNames", "hugeText", "hugeCount", "negativeCount",
                                         "ranges", "oddText", "places", "vanishes", "leaves",
                                         "silent", "drips"),
                         [](const auto& mode) { return std::string(mode.param); });

TEST_F(AtSpiHostile, isLeftAloneWhileItIsSilent) {
    const auto [program, point] = startAt("silent", {100, 100, 600, 300});
    const Point place = point;
    ASSERT_TRUE(bench->desktop().waitUntil([&] { return readsRightly(place); }));
    program->signalAll(SIGUSR1);
    EXPECT_FALSE(extractAt(place).has_value());
    // The window stands for the element.
    const auto window = bench->system().elementAtPosition(place);
    ASSERT_NE(window, nullptr);
    EXPECT_EQ(window->parent(), nullptr);
    EXPECT_EQ(window->value(), std::nullopt);
    EXPECT_TRUE(window->position().has_value());
    EXPECT_TRUE(readsRightly(neighbour));
    bench->desktop().stop(*program);
}

TEST_F(AtSpiHostile, isNotTakenForAnotherWhileItIsTooBusyToSayWhoItIs) {
    const ChildProcess& program = *startAt("busyOffice", {100, 100, 600, 300}).first;
    const auto service = std::make_shared<AtSpiService>();
    const auto toolkit = [&service, pid = program.pid()] {
        using Toolkit = std::optional<AtSpiToolkit>;
        AtSpiBudget budget;
        return service->ask<Toolkit>(
            budget, [pid](AtSpiService::Core& core, AtSpiDeadline& deadline) -> Toolkit {
                const auto found = core.applications.find(pid, deadline);
                return found ? std::optional(found->toolkit) : std::nullopt;
            });
    };
    std::optional<AtSpiToolkit> told;
    ASSERT_TRUE(bench->desktop().waitUntil([&] {
        told = toolkit();
        return bench->desktop().log().find("asked for its name") != std::string::npos;
    }));
    EXPECT_EQ(told, std::nullopt);
    program.signalAll(SIGUSR1);
    ASSERT_TRUE(bench->desktop().waitUntil([&] {
        told = toolkit();
        return told.has_value();
    }));
    EXPECT_EQ(told, AtSpiToolkit::libreOffice);
}

}  // namespace
}  // namespace velmora::test
