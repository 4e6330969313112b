// SPDX-License-Identifier: MIT
#pragma once

#include <gtest/gtest.h>

#include <string>

#include "Tests/Velmora/Coordination/ModelWorld.h"

namespace velmora::testing {

/// Where the pointer of these tests rests.
inline constexpr Point here{500, 500};

/// A model that hovers, and what its lookups show.
struct LookupTest : ::testing::Test, ModelWorld {
    void SetUp() override { startHovering(); }

    void expectStatuses(const std::string& text) {
        EXPECT_EQ(model->hoverStatus(), text);
        EXPECT_EQ(model->lastHoverStatus(), text);
    }
    void expectNothingShown() {
        EXPECT_EQ(popover.frame, std::nullopt);
        EXPECT_EQ(highlight.shown, std::nullopt);
        EXPECT_FALSE(model->currentLookupPresentation().has_value());
    }
    void showPinyin() {
        restAt(here);
        answerLast(hovered("我知道", 1));
    }
    void showDictionary() {
        events.flags = {ModifierFlags::shift};
        restAt(here);
        answerLast(hovered("我知道", 1));
        events.flags = {};
    }
};

}  // namespace velmora::testing
