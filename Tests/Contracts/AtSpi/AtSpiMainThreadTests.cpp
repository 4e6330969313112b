// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>
#include <signal.h>

#include <thread>

#include "Tests/Contracts/AtSpi/AtSpiBench.h"

// The word's rectangle, asked for by a thread that must not wait, and values too long to be read.
namespace velmora::test {
namespace {

template <typename Answer>
Answer onAnotherThread(const std::function<Answer()>& job) {
    Answer answer{};
    std::thread([&] { answer = job(); }).join();
    return answer;
}

class AtSpiMainThread : public testing::Test {
  protected:
    void startWith(const std::string& text) {
        const auto file = bench.desktop().writeFile("sample.txt", text);
        bench.start({"/usr/bin/python3", std::string(VELMORA_FIXTURES) + "/Toolkits/gtk3_sample.py",
                     file.string()});
    }

    std::optional<Rect> bounds(const AccessibilityElement::Pointer& element) {
        return onAnotherThread<std::optional<Rect>>([&] {
            return element->boundsForRange({4, 1});
        });
    }

    AtSpiBench bench;
};

TEST_F(AtSpiMainThread, asksAStoppedProgramForAMomentAndThenDoesWithout) {
    startWith(contractText);
    const auto found = bench.elementShowing("学习");
    ASSERT_NE(found, nullptr);
    const auto cell = found->boundsForRange({4, 1});
    ASSERT_TRUE(cell.has_value());
    const Point point{cell->midX(), cell->midY()};
    const auto probed = bench.system().elementAtPosition(point);
    ASSERT_NE(probed, nullptr);
    const auto range = probed->rangeForPosition(point);
    ASSERT_TRUE(range.has_value());
    ASSERT_TRUE(bench.desktop().waitUntil([&] { return bounds(probed).has_value(); }));

    const auto before = bench.system().timeLeft();
    bench.program().signalAll(SIGSTOP);
    for (int i = 0; i < 5; ++i) {
        EXPECT_EQ(bounds(probed), std::nullopt);
    }
    // Its waits are short ones of its own: the extraction's time is untouched, and nobody is left
    // alone for not answering within them.
    EXPECT_EQ(bench.system().timeLeft(), before);
    bench.program().signalAll(SIGCONT);
    ASSERT_TRUE(bench.desktop().waitUntil([&] { return bounds(probed).has_value(); }));

    // A program that is being left alone is not asked even when it could answer again.
    bench.program().signalAll(SIGSTOP);
    ASSERT_TRUE(bench.desktop().waitUntil([&] {
        const auto window = bench.system().elementAtPosition(point);
        return window && !window->equals(*probed);
    }));
    bench.program().signalAll(SIGCONT);
    EXPECT_EQ(bounds(probed), std::nullopt);
    EXPECT_TRUE(bench.desktop().waitUntil([&] { return bounds(probed).has_value(); }));
}

TEST_F(AtSpiMainThread, readsAWindowOfAValueThatIsTooLong) {
    std::string text;
    for (int line = 0; line < 2500; ++line) {
        text += "我们在学习中文词典\n";
    }
    startWith(text);
    AccessibilityElement::Pointer element;
    const Point point{bench.window().client.x + 100, bench.window().client.y + 90};
    ASSERT_TRUE(bench.desktop().waitUntil([&] {
        element = bench.system().elementAtPosition(point);
        return element && element->rangeForPosition(point).has_value();
    }));
    EXPECT_EQ(element->value(), std::nullopt);
    EXPECT_EQ(element->longValueLength(), 25000);
    const auto range = element->rangeForPosition(point);
    ASSERT_TRUE(range.has_value());
    const std::string characters = "我们在学习中文词典\n";
    const auto start = range->location - range->location % 10;
    EXPECT_EQ(stringAt(*element, start, 10), characters);
    const auto cell = element->boundsForRange(*range);
    ASSERT_TRUE(cell.has_value());
    EXPECT_TRUE(cell->contains(point));
    // Only the stretch around the pointer was read.
    EXPECT_LE(element->stringForRange({0, 20000}).value_or("").size(), 2U * 1024 * 3);
}

}  // namespace
}  // namespace velmora::test
