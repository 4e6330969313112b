// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/resource.h>

#include "Tests/Contracts/AtSpi/AtSpiBench.h"
#include "Tests/Support/TextCapture/ExtractionStage.h"
#include "Velmora/Platform/Linux/AtSpi/AtSpiBudget.h"
#include "Velmora/Platform/Linux/AtSpi/AtSpiSearch.h"
#include "Velmora/Platform/Linux/AtSpi/AtSpiService.h"
#include "Velmora/Platform/Linux/AtSpi/AtSpiTextReader.h"
#include "Velmora/Platform/LinuxX11/X11WindowLocator.h"

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

    /// Whether the program got the question that it does not answer as long as it is busy.
    static bool wasAskedWhileBusy(const std::string& mode) {
        return bench->desktop().log().find("asked while it is busy: " + mode) != std::string::npos;
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
    ChildProcess& program = *startAt("busyOffice", {100, 100, 600, 300}).first;
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
        return wasAskedWhileBusy("busyOffice");
    }));
    EXPECT_EQ(told, std::nullopt);
    program.signalAll(SIGUSR1);
    ASSERT_TRUE(bench->desktop().waitUntil([&] {
        told = toolkit();
        return told.has_value();
    }));
    EXPECT_EQ(told, AtSpiToolkit::libreOffice);
    bench->desktop().stop(program);
}

/// The text of a program, read as one and the same element again and again.
class OneText {
  public:
    explicit OneText(std::int64_t processId) : processId_(processId) {}

    std::optional<QString> read() {
        using Text = std::optional<QString>;
        AtSpiBudget budget;
        return service_->ask<Text>(
            budget,
            [state = state_, pid = processId_](AtSpiService::Core& core,
                                               AtSpiDeadline& deadline) -> Text {
                const auto found = core.applications.find(pid, deadline);
                if (!found) {
                    return std::nullopt;
                }
                state->object = {found->root.bus,
                                 QStringLiteral("/org/a11y/atspi/accessible/text/0")};
                state->toolkit = found->toolkit;
                return AtSpiTextReader(core.bus, *state, deadline).wholeText();
            });
    }

    /// To be asked only while nothing is being read.
    const AtSpiElementState& state() const { return *state_; }

  private:
    std::int64_t processId_;
    std::shared_ptr<AtSpiElementState> state_ = std::make_shared<AtSpiElementState>();
    std::shared_ptr<AtSpiService> service_ = std::make_shared<AtSpiService>();
};

TEST_F(AtSpiHostile, isReadOnlyOnceItSaysOfWhatKindItsTextIs) {
    ChildProcess& program = *startAt("busyText", {100, 100, 600, 300}).first;
    OneText text(program.pid());
    ASSERT_TRUE(bench->desktop().waitUntil([&] {
        EXPECT_EQ(text.read(), std::nullopt);
        return wasAskedWhileBusy("busyText");
    }));
    // Nothing of that is remembered.
    program.signalAll(SIGUSR1);
    EXPECT_TRUE(
        bench->desktop().waitUntil([&] { return text.read() == QString::fromUtf8(content); }));
    bench->desktop().stop(program);
}

TEST_F(AtSpiHostile, givesNoPasswordAwayWhileItIsTooBusyToSayThatItIsOne) {
    ChildProcess& program = *startAt("busyPassword", {100, 100, 600, 300}).first;
    OneText text(program.pid());
    ASSERT_TRUE(bench->desktop().waitUntil([&] {
        EXPECT_EQ(text.read(), std::nullopt);
        return wasAskedWhileBusy("busyPassword");
    }));
    EXPECT_FALSE(text.state().isLearnt);
    program.signalAll(SIGUSR1);
    EXPECT_TRUE(bench->desktop().waitUntil([&] {
        EXPECT_EQ(text.read(), std::nullopt);
        return text.state().isLearnt;
    }));
    bench->desktop().stop(program);
}

TEST_F(AtSpiHostile, isNotReadAtAnotherPlaceWhileItIsTooBusyToSayWhereItsTextStands) {
    const auto [program, point] = startAt("busyCorner", {100, 100, 600, 300});
    X11WindowLocator locator{X11ClientRange{}};
    const auto window = locator.topmostWindowAt(point);
    ASSERT_TRUE(window && window->processId == program->pid());
    const auto service = std::make_shared<AtSpiService>();
    const auto focused = [&] {
        using Found = std::optional<AtSpiElementState>;
        AtSpiBudget budget;
        return service->ask<Found>(
            budget, [window = *window](AtSpiService::Core& core, AtSpiDeadline&) {
                const ScreenGeometry screen({{1, {0, 0, 1600, 1000}, 1, {0, 0, 1600, 1000}}});
                // Less than the whole budget: whatever is found comes in time.
                AtSpiDeadline brief(std::chrono::milliseconds(150), AtSpiBudget::perCall,
                                    AtSpiPurpose::focus);
                return findAtSpiFocusedElement(core, window, screen, brief);
            });
    };
    ASSERT_TRUE(bench->desktop().waitUntil([&] {
        EXPECT_FALSE(focused().has_value());
        return wasAskedWhileBusy("busyCorner");
    }));
    program->signalAll(SIGUSR1);
    std::optional<AtSpiElementState> found;
    ASSERT_TRUE(bench->desktop().waitUntil([&] {
        found = focused();
        return found.has_value();
    }));
    // Its own elements count from another corner, 30 pixels above.
    EXPECT_EQ(found->space.captureFromTarget({200, 100, 20, 24}), (Rect{200, 130, 20, 24}));
    bench->desktop().stop(*program);
}

}  // namespace
}  // namespace velmora::test
