// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include "Velmora/Platform/Recognition/CharacterShape.h"

namespace velmora {
namespace {

GrayImage cross() {
    GrayImage picture(48, 48, 255);
    for (int i = 4; i < 44; ++i) {
        for (int k = 22; k < 26; ++k) {
            picture.at(i, k) = 0;
            picture.at(k, i) = 0;
        }
    }
    return picture;
}

/// Draws every character as a cross, unless it fails.
class CrossReader final : public LineReader {
  public:
    std::optional<LineReading> read(const GrayImage&, ScriptModel) override { return std::nullopt; }
    std::optional<GrayImage> drawCharacter(char32_t, ScriptModel) override {
        ++drawings;
        return fails ? std::nullopt : std::optional(cross());
    }

    bool fails = false;
    int drawings = 0;
};

TEST(ShapeMatcher, RemembersWhatItHasSeen) {
    CrossReader reader;
    ShapeMatcher matcher(reader);
    const auto ink = CharacterShape::of(cross());
    ASSERT_TRUE(ink);
    EXPECT_NEAR(matcher.similarity(*ink, U'十').value_or(0), 1, 1e-6);
    const int before = reader.drawings;
    EXPECT_NEAR(matcher.similarity(*ink, U'十').value_or(0), 1, 1e-6);
    EXPECT_EQ(reader.drawings, before);
}

TEST(ShapeMatcher, AsksAReaderThatFailedOnceMore) {
    CrossReader reader;
    ShapeMatcher matcher(reader);
    const auto ink = CharacterShape::of(cross());
    ASSERT_TRUE(ink);
    reader.fails = true;
    EXPECT_FALSE(matcher.similarity(*ink, U'十'));
    reader.fails = false;
    EXPECT_TRUE(matcher.similarity(*ink, U'十'));
}

}  // namespace
}  // namespace velmora
