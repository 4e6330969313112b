// SPDX-License-Identifier: MIT
#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <ostream>
#include <set>
#include <string>

#include "Velmora/Platform/ScreenCapture.h"

namespace velmora {

/// A screen to hold against the contract of every screen: which one, how it is made, and a
/// rectangle that it can capture. Instantiate `ScreenCaptureContract` with one for each backend.
struct ScreenCaptureSubject {
    std::string name;
    std::function<std::shared_ptr<ScreenCapture>()> make;
    Rect capturable{0, 0, 100, 50};  ///< Inside the main display.

    friend std::ostream& operator<<(std::ostream& out, const ScreenCaptureSubject& subject) {
        return out << subject.name;
    }
};

class ScreenCaptureContract : public ::testing::TestWithParam<ScreenCaptureSubject> {
  protected:
    std::shared_ptr<ScreenCapture> screen = GetParam().make();
};

GTEST_ALLOW_UNINSTANTIATED_PARAMETERIZED_TEST(ScreenCaptureContract);

TEST_P(ScreenCaptureContract, ListsDisplaysWithAnAreaAndIdsOfTheirOwn) {
    std::set<std::uint64_t> ids;
    for (const Display& display : screen->displays()) {
        EXPECT_TRUE(display.bounds.isFinite());
        EXPECT_FALSE(display.bounds.isEmpty());
        EXPECT_TRUE(ids.insert(display.id).second);
    }
    EXPECT_FALSE(ids.empty());
    EXPECT_EQ(screen->displays(), screen->displays());
}

TEST_P(ScreenCaptureContract, ShowsARectangleInNativePixels) {
    const auto displays = screen->displays();
    ASSERT_FALSE(displays.empty());
    const Rect rect = GetParam().capturable;
    const auto image = screen->capture(displays.front().id, rect);
    ASSERT_TRUE(image);
    ASSERT_FALSE(image->isEmpty());
    // The same scale both ways, to a pixel.
    const double scale = image->width() / rect.width;
    EXPECT_NEAR(image->height(), rect.height * scale, 1.0 + scale);
    const auto again = screen->capture(displays.front().id, rect);
    ASSERT_TRUE(again);
    EXPECT_EQ(again->width(), image->width());
    EXPECT_EQ(again->height(), image->height());
}

TEST_P(ScreenCaptureContract, ShowsNothingOfAnUnknownDisplay) {
    std::uint64_t unknown = 1;
    for (const Display& display : screen->displays()) {
        unknown = std::max(unknown, display.id + 1);
    }
    EXPECT_FALSE(screen->capture(unknown, GetParam().capturable));
}

TEST_P(ScreenCaptureContract, ShowsNothingWithoutAnArea) {
    const auto displays = screen->displays();
    ASSERT_FALSE(displays.empty());
    const auto image = screen->capture(displays.front().id, {10, 10, 0, 0});
    EXPECT_TRUE(!image || image->isEmpty());
}

}  // namespace velmora
