// SPDX-License-Identifier: MIT
#include "Tests/Contracts/AtSpi/AtSpiToolkitTest.h"

#include <signal.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <utility>

namespace velmora::test {

std::unique_ptr<AtSpiBench> AtSpiToolkitTest::bench;

namespace {

using Milliseconds = std::chrono::duration<double, std::milli>;

Milliseconds since(std::chrono::steady_clock::time_point begin) {
    return std::chrono::steady_clock::now() - begin;
}

/// Asks the element that shows this text until it answers. A program that is too busy to answer
/// within the time of a query is passed over, as it should be, and tells nothing of itself here.
template <typename Read>
auto readShown(AtSpiBench& bench, const std::string& text, Read read) {
    decltype(read(std::declval<const AccessibilityElement&>())) answer;
    bench.desktop().waitUntil([&] {
        const AccessibilityElement::Pointer element = bench.elementShowing(text);
        if (element) {
            answer = read(*element);
        }
        return answer.has_value();
    });
    return answer;
}

/// The position of a text in the value of the element that shows it; −1 where it is not.
std::int64_t locationOf(AtSpiBench& bench, const std::string& text) {
    const auto found = readShown(bench, text, [&](const AccessibilityElement& element) {
        const std::int64_t position = positionIn(element, text);
        return position < 0 ? std::nullopt : std::optional(position);
    });
    return found.value_or(-1);
}

/// Where the characters of a text stand, from one of them on.
std::optional<Rect> cellsOf(AtSpiBench& bench, const std::string& text, std::int64_t from,
                            std::int64_t length) {
    return readShown(bench, text, [&](const AccessibilityElement& element) {
        return element.boundsForRange({positionIn(element, text) + from, length});
    });
}

/// What stands at a point: the element, the position in it, and the cell of that.
struct Under {
    AccessibilityElement::Pointer hit;
    std::optional<Utf16Range> range;
    std::optional<Rect> cell;
};

/// Asked for until it is told, as above.
Under under(AtSpiBench& bench, Point point) {
    Under result;
    bench.desktop().waitUntil([&] {
        result = {bench.system().elementAtPosition(point), {}, {}};
        result.range = result.hit ? result.hit->rangeForPosition(point) : std::nullopt;
        result.cell = result.range ? result.hit->boundsForRange(*result.range) : std::nullopt;
        return result.cell.has_value();
    });
    return result;
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
    const std::int64_t location = locationOf(*bench, text);
    const auto cell = cellsOf(*bench, text, 0, 1);
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
        const Under found = under(*bench, point);
        ASSERT_NE(found.hit, nullptr);
        EXPECT_TRUE(found.hit->equals(*element));
        ASSERT_TRUE(found.range.has_value()) << "at " << part << " of the cell";
        EXPECT_EQ(found.range->location, location) << "at " << part << " of the cell";
        EXPECT_EQ(found.range->length, 1);
        ASSERT_TRUE(found.cell.has_value());
        EXPECT_TRUE(found.cell->contains(point));
    }
    const auto beforeLength = QString::fromStdString(before).size();
    const auto afterLength = QString::fromStdString(after).size();
    const auto around = readShown(*bench, text, [&](const AccessibilityElement& each) {
        return each.stringForRange({location - beforeLength, beforeLength + 1 + afterLength});
    });
    EXPECT_EQ(around, before + text + after);
}

void AtSpiToolkitTest::checkPair(const std::string& text) {
    ASSERT_NE(shown(text), nullptr);
    const std::int64_t location = locationOf(*bench, text);
    const auto pair = readShown(*bench, text, [&](const AccessibilityElement& each) {
        return each.stringForRange({location, 2});
    });
    ASSERT_EQ(pair, text);
    const auto cell = cellsOf(*bench, text, 0, 2);
    ASSERT_TRUE(cell.has_value());
    const Point point{cell->x + cell->width / 2, cell->midY()};
    const auto range = readShown(*bench, text, [&](const AccessibilityElement& each) {
        return each.rangeForPosition(point);
    });
    ASSERT_TRUE(range.has_value());
    EXPECT_EQ(*range, (Utf16Range{location, 2}));
}

void AtSpiToolkitTest::checkEmptySpace(const std::string& text) {
    const AccessibilityElement::Pointer element = shown(text);
    ASSERT_NE(element, nullptr);
    const auto cell = cellsOf(*bench, text, 0, 1);
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
    ASSERT_NE(shown(word), nullptr);
    const auto length = QString::fromStdString(word).size();
    const auto first = cellsOf(*bench, word, 0, 1);
    const auto last = cellsOf(*bench, word, length - 1, 1);
    ASSERT_TRUE(first.has_value() && last.has_value());
    bench->drag(*first, *last);
    const Point place{first->midX(), first->midY()};
    std::optional<std::string> seen;
    std::optional<Utf16Range> range;
    std::optional<std::string> text;
    std::optional<Rect> bounds;
    const bool selected = bench->desktop().waitUntil([&] {
        for (auto holder = bench->system().elementAtPosition(place); holder;
             holder = holder->parent()) {
            const auto told = holder->selectedText();
            seen = told ? told : seen;
            if (told == word) {
                range = holder->selectedTextRange();
                text = range ? holder->stringForRange(*range) : std::nullopt;
                bounds = range ? holder->boundsForRange(*range) : std::nullopt;
                return text && bounds;
            }
        }
        return false;
    });
    ASSERT_TRUE(selected) << "selected is " << seen.value_or("(nothing)");
    EXPECT_EQ(text, word);
    EXPECT_NEAR(bounds->minX(), first->minX(), 2);
    EXPECT_NEAR(bounds->maxX(), last->maxX(), 2);
    EXPECT_TRUE(bounds->contains(place));
}

void AtSpiToolkitTest::checkStopped(const std::string& text) {
    const AccessibilityElement::Pointer element = shown(text);
    ASSERT_NE(element, nullptr);
    const auto cell = cellsOf(*bench, text, 0, 1);
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
    const auto cell = cellsOf(*bench, text, 0, 1);
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
