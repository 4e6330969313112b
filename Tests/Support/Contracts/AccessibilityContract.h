// SPDX-License-Identifier: MIT
#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <limits>
#include <memory>
#include <ostream>
#include <string>

#include "Velmora/Platform/AccessibilitySystem.h"
#include "VelmoraCore/CharacterText.h"

namespace velmora {

/// A desktop's elements to hold against the contract of all: how they are reached, and a point with
/// a text that an element there tells. Instantiate `AccessibilityContract` with one for each
/// backend.
struct AccessibilitySubject {
    std::string name;
    std::function<std::shared_ptr<AccessibilitySystem>()> make;
    Point point;       ///< In capture space, on a character of the text.
    std::string text;  ///< Part of the value of the element there or of one above it.

    friend std::ostream& operator<<(std::ostream& out, const AccessibilitySubject& subject) {
        return out << subject.name;
    }
};

class AccessibilityContract : public ::testing::TestWithParam<AccessibilitySubject> {
  protected:
    /// The first element from the point upwards whose value holds the text.
    AccessibilityElement::Pointer textElement() {
        auto element = system->elementAtPosition(GetParam().point);
        for (int level = 0; element != nullptr && level < 5; ++level) {
            if (element->value().value_or("").find(GetParam().text) != std::string::npos) {
                return element;
            }
            element = element->parent();
        }
        return nullptr;
    }

    std::shared_ptr<AccessibilitySystem> system = GetParam().make();
};

GTEST_ALLOW_UNINSTANTIATED_PARAMETERIZED_TEST(AccessibilityContract);

TEST_P(AccessibilityContract, FindsTheElementThatHoldsTheText) {
    const auto element = textElement();
    ASSERT_NE(element, nullptr);
    EXPECT_TRUE(element->equals(*element));
    const auto again = textElement();
    ASSERT_NE(again, nullptr);
    EXPECT_TRUE(element->equals(*again));
    EXPECT_TRUE(again->equals(*element));
}

TEST_P(AccessibilityContract, TellsTheCharacterAtThePointAndWhereItStands) {
    const auto element = textElement();
    ASSERT_NE(element, nullptr);
    const auto range = element->rangeForPosition(GetParam().point);
    ASSERT_TRUE(range);
    ASSERT_GE(range->location, 0);
    const auto bounds =
        element->boundsForRange({range->location, std::max<std::int64_t>(range->length, 1)});
    ASSERT_TRUE(bounds);
    EXPECT_TRUE(bounds->grownBy(6).contains(GetParam().point));
}

TEST_P(AccessibilityContract, TellsTheSameTextInPartsAsInWhole) {
    const auto element = textElement();
    ASSERT_NE(element, nullptr);
    const std::string value = element->value().value_or("");
    const auto length = static_cast<std::int64_t>(utf16Length(value));
    const auto whole = element->stringForRange({0, length});
    EXPECT_TRUE(!whole || *whole == value);
}

TEST_P(AccessibilityContract, HasNoElementWhereNoPointIs) {
    const double nan = std::numeric_limits<double>::quiet_NaN();
    EXPECT_EQ(system->elementAtPosition({nan, 5}), nullptr);
    EXPECT_EQ(system->elementAtPosition({5, std::numeric_limits<double>::infinity()}), nullptr);
}

TEST_P(AccessibilityContract, SurvivesRangesBeyondTheText) {
    const auto element = textElement();
    ASSERT_NE(element, nullptr);
    constexpr auto most = std::numeric_limits<std::int64_t>::max();
    constexpr auto least = std::numeric_limits<std::int64_t>::min();
    for (const Utf16Range range : {Utf16Range{-5, 3}, Utf16Range{0, -1}, Utf16Range{most, most},
                                   Utf16Range{least, most}, Utf16Range{100'000, 5}}) {
        const auto bounds = element->boundsForRange(range);
        EXPECT_TRUE(!bounds || bounds->isFinite());
        const auto text = element->stringForRange(range);
        EXPECT_LE(text.value_or("").size(), 200'000U);
    }
}

}  // namespace velmora
