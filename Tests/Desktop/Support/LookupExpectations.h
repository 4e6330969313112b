// SPDX-License-Identifier: MIT
#pragma once

#include <gtest/gtest.h>

#include <algorithm>

#include "Tests/Desktop/Support/HoverStage.h"

// What a lookup must look like on the screen, whatever the program and however it was read.
// Rectangles are pixels of the X server.
namespace velmora::test {

/// How far the outline may be from what it outlines, in pixels.
struct OutlineLimits {
    double glyphs = 2;         ///< What it may cut off the word's glyphs.
    double beside = 2;         ///< How far it may reach over the word's neighbours,
    double aboveAndBelow = 2;  ///< and over the lines around it.
};

/// The outline holds the glyphs of the word and nothing of what stands around them.
inline void expectOutline(const HoverStage& stage, const Hover& hover, std::size_t line,
                          const MatchedTextRange& word, const OutlineLimits& limits) {
    ASSERT_TRUE(hover.highlight);
    const auto first = static_cast<std::size_t>(word.start);
    const auto count = static_cast<std::size_t>(word.end - word.start);
    const auto glyphs = stage.glyphs(line, first, count);
    ASSERT_TRUE(glyphs);
    const Rect cells = stage.lines().at(line).cells(first, count);
    const Rect frame = stage.outlined(hover);
    EXPECT_LE(frame.minX(), glyphs->minX() + limits.glyphs);
    EXPECT_GE(frame.maxX(), glyphs->maxX() - limits.glyphs);
    EXPECT_LE(frame.minY(), glyphs->minY() + limits.glyphs);
    EXPECT_GE(frame.maxY(), glyphs->maxY() - limits.glyphs);
    EXPECT_GE(frame.minX(), cells.minX() - limits.beside);
    EXPECT_LE(frame.maxX(), cells.maxX() + limits.beside);
    EXPECT_GE(frame.minY(), cells.minY() - limits.aboveAndBelow);
    EXPECT_LE(frame.maxY(), cells.maxY() + limits.aboveAndBelow);
}

/// The popover's width and height in points are within these.
inline void expectPopoverSize(const HoverStage& stage, const Hover& hover, Size least,
                              Size greatest) {
    ASSERT_TRUE(hover.popover);
    const double scale = stage.screens().monitorAt(hover.pointer).scale;
    EXPECT_GE(hover.popover->width, least.width * scale);
    EXPECT_LE(hover.popover->width, greatest.width * scale);
    EXPECT_GE(hover.popover->height, least.height * scale);
    EXPECT_LE(hover.popover->height, greatest.height * scale);
}

/// The popover stands in the middle of the outlined word, or as near to it as 12 points from the
/// sides of the screen allow.
inline void expectPopoverCentred(const HoverStage& stage, const Hover& hover) {
    ASSERT_TRUE(hover.popover);
    const StageScreens::Monitor& screen = stage.screens().monitorAt(hover.pointer);
    const double reach = 12 * screen.scale + hover.popover->width / 2;
    const double middle = std::clamp(stage.outlined(hover).midX(), screen.pixels.minX() + reach,
                                     screen.pixels.maxX() - reach);
    EXPECT_NEAR(hover.popover->midX(), middle, screen.scale);
}

/// The bubble stands over the middle of the outlined word.
inline void expectBubbleAbove(const HoverStage& stage, const Hover& hover) {
    ASSERT_TRUE(hover.popover);
    const double scale = stage.screens().monitorAt(hover.pointer).scale;
    const Rect word = stage.outlined(hover);
    EXPECT_NEAR(hover.popover->maxY(), word.minY() - 16 * scale, scale);
    expectPopoverCentred(stage, hover);
    expectPopoverSize(stage, hover, {56, 32}, {260, 48});
}

/// The dictionary stands under the middle of the outlined word.
inline void expectDictionaryBelow(const HoverStage& stage, const Hover& hover) {
    ASSERT_TRUE(hover.popover);
    const double scale = stage.screens().monitorAt(hover.pointer).scale;
    const Rect word = stage.outlined(hover);
    EXPECT_NEAR(hover.popover->minY(), word.maxY() + 10 * scale, scale);
    expectPopoverCentred(stage, hover);
    expectPopoverSize(stage, hover, {320, 180}, {390, 360});
}

}  // namespace velmora::test
