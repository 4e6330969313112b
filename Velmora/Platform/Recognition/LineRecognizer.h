// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <vector>

#include "Velmora/Platform/Recognition/CharacterShape.h"
#include "Velmora/Platform/Recognition/LineFinder.h"
#include "Velmora/Platform/Recognition/LineReader.h"
#include "Velmora/Platform/Recognition/PlacedCharacter.h"
#include "Velmora/Platform/Recognition/WordPatterns.h"

namespace velmora {

/// One reading of a line.
struct LineCandidate {
    PlacedLine characters;
    float confidence = 0;  ///< Calibrated for the word at the point of interest.
};

/// A line as it was read: the part of it that was looked at and its readings, the best first.
struct ReadLine {
    PixelBox box;
    std::vector<LineCandidate> candidates;
};

/// Reads one found line: with the model of the script that the screen was last in, then once more
/// around the point of interest with both models. Where the readings differ the ink decides, by
/// comparison with the forms of the characters in question; words that the word list knows are
/// tried where a character stands alone. Keeps the script for the next line. Not for several
/// threads at once.
class LineRecognizer {
  public:
    /// The word list may be absent.
    LineRecognizer(LineReader& reader, const WordPatterns* words)
        : reader_(reader), words_(words), shapes_(reader) {}

    /// Words for the next lines, or null; they must stay until others are set.
    void setWords(const WordPatterns* words) { words_ = words; }

    /// `focus` is a column of the picture; without it the line is read once, as a whole.
    ReadLine recognize(const FoundLines& found, const TextLine& line, std::optional<double> focus);

  private:
    /// Characters first..<last of a line: those around the point of interest.
    struct Window {
        std::size_t first = 0;
        std::size_t last = 0;
        std::size_t focus = 0;
        PixelBox box;
    };

    PlacedLine readBox(const FoundLines& found, const PixelBox& box, double inkHeight,
                       ScriptModel model);
    Window windowAround(const PixelBox& box, const PlacedLine& line, int focus) const;
    using InkForms = std::vector<CharacterShape>;

    InkForms inkForms(const FoundLines& found, const PixelBox& box,
                      const CharacterCell& cell) const;
    double likeness(const InkForms& ink, const std::string& character);
    double evidenceAgainst(const FoundLines& found, const PlacedLine& line, const Window& window,
                           const PlacedLine& other);
    void confirm(const FoundLines& found, PlacedLine& line, const Window& window,
                 const PlacedLine& second, const PlacedLine& other);
    void tryWords(const FoundLines& found, PlacedLine& line, const Window& window);
    bool completeWord(const FoundLines& found, PlacedLine& line, const Window& window,
                      std::size_t place);
    bool standsInWord(const PlacedLine& line, std::size_t place) const;
    float calibrated(const FoundLines& found, const PlacedLine& line, const Window& window);
    std::optional<PlacedLine> otherScript(const FoundLines& found, const PlacedLine& line,
                                          const Window& window, const PlacedLine& other);

    LineReader& reader_;
    const WordPatterns* words_;
    ShapeMatcher shapes_;
    ScriptModel script_ = ScriptModel::simplified;
};

}  // namespace velmora
