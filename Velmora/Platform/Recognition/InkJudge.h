// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "Velmora/Platform/Recognition/CharacterShape.h"
#include "Velmora/Platform/Recognition/LineFinder.h"
#include "Velmora/Platform/Recognition/PlacedCharacter.h"
#include "Velmora/Platform/Recognition/ReadingWindow.h"

namespace velmora {

/// Decides between readings of the same ink by comparing it with the forms of the characters in
/// question. Not for several threads at once.
class InkJudge {
  public:
    /// Differences of likeness that settle a dispute.
    static constexpr double clearlyLiker = 0.05;
    static constexpr double slightlyLiker = 0.015;
    static constexpr double unlike = 0.45;  ///< Below this the ink is hardly that character.
    static constexpr double alike = 0.75;   ///< The wrong form of a script reaches 0.7.

    /// The ink of a cell, as it was cut and cut a little differently.
    using InkForms = std::vector<CharacterShape>;

    explicit InkJudge(LineReader& reader) : shapes_(reader) {}

    static InkForms inkForms(const FoundLines& found, const PixelBox& box,
                             const CharacterCell& cell);

    /// How alike ink and a Han character are; 0 for anything else.
    double likeness(const InkForms& ink, const std::string& character);

    /// How much more the ink looks like the other model's characters where the two differ.
    double evidenceAgainst(const FoundLines& found, const PlacedLine& line,
                           const ReadingWindow& window, const PlacedLine& other);

    /// Compares the readings character by character. Where they differ, the one that the ink looks
    /// like is taken; it counts as confirmed only when it does so clearly.
    void confirm(const FoundLines& found, PlacedLine& line, const ReadingWindow& window,
                 const PlacedLine& second, const PlacedLine& other);

    /// The same line in the forms of the other script, where the ink does not tell the two apart.
    std::optional<PlacedLine> otherScript(const FoundLines& found, const PlacedLine& line,
                                          const ReadingWindow& window, const PlacedLine& other);

  private:
    ShapeMatcher shapes_;
};

}  // namespace velmora
