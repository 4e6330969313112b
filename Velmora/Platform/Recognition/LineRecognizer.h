// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "Velmora/Platform/Recognition/GlyphJudge.h"
#include "Velmora/Platform/Recognition/InkJudge.h"
#include "Velmora/Platform/Recognition/LineFinder.h"
#include "Velmora/Platform/Recognition/LineReader.h"
#include "Velmora/Platform/Recognition/PlacedCharacter.h"
#include "Velmora/Platform/Recognition/WordCompletion.h"
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

/// Whether a line that leaves doubts is read again to settle them.
enum class LineEffort { once, full };

/// Reads one found line with the model of the script that the screen was last in. Around the point
/// of interest every character is then compared with the forms that fonts have, and further
/// readings are made only where that leaves doubts. Where no forms are at hand, three readings are
/// compared instead, the ink decides where they differ, and words that the word list knows are
/// tried where a character stands alone. Keeps the script for the next line. Not for several
/// threads at once.
class LineRecognizer {
  public:
    /// The word list may be absent.
    LineRecognizer(LineReader& reader, const WordPatterns* words)
        : reader_(reader), words_(words), ink_(reader), glyphs_(reader) {}

    /// Words for the next lines, or null; they must stay until others are set.
    void setWords(const WordPatterns* words) { words_ = words; }

    /// `focus` is a column of the picture; without it the line is read once, as a whole.
    ReadLine recognize(const FoundLines& found, const TextLine& line, std::optional<double> focus,
                       LineEffort effort = LineEffort::full);

  private:
    static constexpr double firstInkHeight = 33;  ///< Pixels that a line is brought to.

    PlacedLine readBox(const FoundLines& found, const PixelBox& box, double inkHeight,
                       ScriptModel model);
    ReadingWindow windowAround(const PixelBox& box, const PlacedLine& line, int focus) const;
    bool recognizeByGlyphs(const FoundLines& found, PlacedLine& characters, double focus,
                           LineEffort effort, ReadLine& result);
    void recognizeByReadings(const FoundLines& found, PlacedLine characters, double focus,
                             ReadLine& result);
    bool beginBox(const FoundLines& found, const PixelBox& box, double inkHeight,
                  ScriptModel model);
    void learnScript(const FoundLines& found, const ReadingWindow& window,
                     const PlacedLine& characters, std::size_t agreed);
    void judgeBeside(const FoundLines& found, PlacedLine& characters, ReadingWindow& window,
                     double focus, const GlyphJudge::Verdict& verdict);
    void applyLearnedScript();
    bool isDecided(PlacedLine characters, const ReadingWindow& window);
    float certaintyOfWord(const PlacedLine& line, const ReadingWindow& window);
    float calibrated(const FoundLines& found, const PlacedLine& line, const ReadingWindow& window);

    /// A line that is being read in the other script, and how well its own did.
    struct Lesson {
        GrayImage line;
        ScriptModel model;
        std::vector<std::string> characters;
        std::size_t agreed;  ///< With the reading in the line's own script.
    };

    LineReader& reader_;
    const WordPatterns* words_;
    InkJudge ink_;
    GlyphJudge glyphs_;
    ScriptModel script_ = ScriptModel::simplified;
    std::optional<Lesson> lesson_;
};

}  // namespace velmora
