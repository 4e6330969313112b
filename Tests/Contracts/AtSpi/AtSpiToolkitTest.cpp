// SPDX-License-Identifier: MIT
#include "Tests/Contracts/AtSpi/AtSpiToolkitTest.h"

#include <signal.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>

namespace velmora::test {

std::unique_ptr<AtSpiBench> AtSpiToolkitTest::bench;

namespace {

using Milliseconds = std::chrono::duration<double, std::milli>;

Milliseconds since(std::chrono::steady_clock::time_point begin) {
    return std::chrono::steady_clock::now() - begin;
}

}  // namespace

void AtSpiToolkitTest::startOnce(std::vector<std::string> command,
                                 const ChildProcess::Environment& extra) {
    bench = std::make_unique<AtSpiBench>();
    bench->start(std::move(command), extra);
}

void AtSpiToolkitTest::stop() {
    bench.reset();
}

void AtSpiToolkitTest::TearDown() {
    if (HasFailure()) {
        const auto* test = testing::UnitTest::GetInstance()->current_test_info();
        bench->saveScreenshot(std::string(test->test_suite_name()) + "." + test->name());
    }
}

AccessibilityElement::Pointer AtSpiToolkitTest::shown(const std::string& text) {
    AccessibilityElement::Pointer element = bench->elementShowing(text);
    EXPECT_NE(element, nullptr) << text << " is nowhere in the window";
    return element;
}

void AtSpiToolkitTest::checkCharacter(const std::string& text, const std::string& before,
                                      const std::string& after) {
    const AccessibilityElement::Pointer element = shown(text);
    ASSERT_NE(element, nullptr);
    const std::int64_t location = positionIn(*element, text);
    const auto cell = element->boundsForRange({location, 1});
    ASSERT_TRUE(cell.has_value());

    // Its ink stands in the middle of the cell, with nothing to its sides.
    const auto ink = bench->ink(cell->grownBy(cell->width / 3, 0));
    ASSERT_TRUE(ink.has_value()) << cell->x << "," << cell->y << " " << cell->width << "x"
                                 << cell->height;
    EXPECT_NEAR(ink->midX(), cell->midX(), 2);
    EXPECT_GE(ink->width, cell->width * 0.6);
    EXPECT_LE(ink->width, cell->width + 2);
    EXPECT_GE(ink->minY(), cell->minY() - 2);
    EXPECT_LE(ink->maxY(), cell->maxY() + 2);
    EXPECT_GE(ink->height, cell->width * 0.5);

    for (const double part : {0.2, 0.5, 0.8}) {
        const Point point{cell->x + cell->width * part, cell->midY()};
        const auto hit = bench->system().elementAtPosition(point);
        ASSERT_NE(hit, nullptr);
        EXPECT_TRUE(hit->equals(*element));
        const auto range = hit->rangeForPosition(point);
        ASSERT_TRUE(range.has_value()) << "at " << part << " of the cell";
        EXPECT_EQ(range->location, location) << "at " << part << " of the cell";
        EXPECT_EQ(range->length, 1);
        const auto under = hit->boundsForRange(*range);
        ASSERT_TRUE(under.has_value());
        EXPECT_TRUE(under->contains(point));
    }
    const auto beforeLength = QString::fromStdString(before).size();
    const auto afterLength = QString::fromStdString(after).size();
    EXPECT_EQ(stringAt(*element, location - beforeLength, beforeLength + 1 + afterLength),
              before + text + after);
}

void AtSpiToolkitTest::checkPair(const std::string& text) {
    const AccessibilityElement::Pointer element = shown(text);
    ASSERT_NE(element, nullptr);
    const std::int64_t location = positionIn(*element, text);
    ASSERT_EQ(stringAt(*element, location, 2), text);
    const auto cell = element->boundsForRange({location, 2});
    ASSERT_TRUE(cell.has_value());
    const Point point{cell->x + cell->width / 2, cell->midY()};
    const auto range = element->rangeForPosition(point);
    ASSERT_TRUE(range.has_value());
    EXPECT_EQ(*range, (Utf16Range{location, 2}));
}

void AtSpiToolkitTest::checkEmptySpace(const std::string& text) {
    const AccessibilityElement::Pointer element = shown(text);
    ASSERT_NE(element, nullptr);
    const auto cell = element->boundsForRange({positionIn(*element, text), 1});
    ASSERT_TRUE(cell.has_value());
    for (const Point away : {Point{400, 0}, Point{0, 250}, Point{450, 250}}) {
        const Point point{cell->midX() + away.x, cell->midY() + away.y};
        const auto hit = bench->system().elementAtPosition(point);
        if (!hit) {
            continue;
        }
        if (const auto range = hit->rangeForPosition(point)) {
            const auto bounds = hit->boundsForRange(*range);
            ASSERT_TRUE(bounds.has_value());
            EXPECT_TRUE(bounds->grownBy(2).contains(point))
                << "names " << stringAt(*hit, range->location, range->length)
                << " over empty space";
        }
    }
}

void AtSpiToolkitTest::checkSelection(const std::string& word) {
    const AccessibilityElement::Pointer element = shown(word);
    ASSERT_NE(element, nullptr);
    const std::int64_t location = positionIn(*element, word);
    const auto length = QString::fromStdString(word).size();
    const auto first = element->boundsForRange({location, 1});
    const auto last = element->boundsForRange({location + length - 1, 1});
    ASSERT_TRUE(first.has_value() && last.has_value());
    bench->drag(*first, *last);
    AccessibilityElement::Pointer holder;
    const bool selected = bench->desktop().waitUntil([&] {
        for (holder = bench->system().elementAtPosition({first->midX(), first->midY()}); holder;
             holder = holder->parent()) {
            if (holder->selectedText() == word) {
                return true;
            }
        }
        return false;
    });
    ASSERT_TRUE(selected) << "selected is "
                          << bench->system()
                                 .elementAtPosition({first->midX(), first->midY()})
                                 ->selectedText()
                                 .value_or("(nothing)");
    const auto range = holder->selectedTextRange();
    ASSERT_TRUE(range.has_value());
    EXPECT_EQ(stringAt(*holder, range->location, range->length), word);
    const auto bounds = holder->boundsForRange(*range);
    ASSERT_TRUE(bounds.has_value());
    EXPECT_NEAR(bounds->minX(), first->minX(), 2);
    EXPECT_NEAR(bounds->maxX(), last->maxX(), 2);
    EXPECT_TRUE(bounds->contains({first->midX(), first->midY()}));
}

void AtSpiToolkitTest::checkStopped(const std::string& text) {
    const AccessibilityElement::Pointer element = shown(text);
    ASSERT_NE(element, nullptr);
    const auto cell = element->boundsForRange({positionIn(*element, text), 1});
    ASSERT_TRUE(cell.has_value());
    const Point point{cell->midX(), cell->midY()};

    bench->program().signalAll(SIGSTOP);
    for (int i = 0; i < 3; ++i) {
        const auto begin = std::chrono::steady_clock::now();
        const auto window = bench->system().elementAtPosition(point);
        ASSERT_NE(window, nullptr);
        EXPECT_EQ(window->parent(), nullptr);
        EXPECT_EQ(window->value(), std::nullopt);
        EXPECT_EQ(window->title(), std::nullopt);
        EXPECT_EQ(window->rangeForPosition(point), std::nullopt);
        EXPECT_TRUE(window->position().has_value() && window->size().has_value());
        EXPECT_FALSE(window->equals(*element));
        std::printf("stopped, query %d: %.1f ms\n", i, since(begin).count());
    }
    EXPECT_EQ(element->boundsForRange({0, 1}), std::nullopt);
    bench->program().signalAll(SIGCONT);
    const bool isBack = bench->desktop().waitUntil([&] {
        const auto again = bench->system().elementAtPosition(point);
        return again && again->equals(*element) && again->rangeForPosition(point);
    });
    EXPECT_TRUE(isBack);
}

void AtSpiToolkitTest::reportTime(const std::string& text) {
    const AccessibilityElement::Pointer element = shown(text);
    ASSERT_NE(element, nullptr);
    const auto cell = element->boundsForRange({positionIn(*element, text), 1});
    ASSERT_TRUE(cell.has_value());
    const Point point{cell->midX(), cell->midY()};
    std::vector<double> times;
    for (int i = 0; i < 40; ++i) {
        const auto begin = std::chrono::steady_clock::now();
        const auto hit = bench->system().elementAtPosition(point);
        if (hit) {
            hit->selectedText();
            const auto range = hit->rangeForPosition(point);
            if (range) {
                hit->boundsForRange(*range);
                hit->stringForRange({std::max<std::int64_t>(range->location - 24, 0), 48});
            }
        }
        times.push_back(since(begin).count());
    }
    std::sort(times.begin(), times.end());
    std::printf("one query: median %.2f ms, 95th percentile %.2f ms\n", times[times.size() / 2],
                times[times.size() * 95 / 100]);
}

}  // namespace velmora::test
