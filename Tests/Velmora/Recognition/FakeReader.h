// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>
#include <deque>
#include <map>

#include "Tests/Velmora/Recognition/Drawing.h"
#include "Velmora/Platform/Recognition/InkCorrelation.h"
#include "Velmora/Platform/Recognition/LineFinder.h"
#include "Velmora/Platform/Recognition/LineImage.h"
#include "Velmora/Platform/Recognition/LineReader.h"

namespace velmora {

inline constexpr int em = 24;

/// A character's own form: bars at places that depend on its code point.
inline void drawForm(GrayImage& image, int left, int top, int size, char32_t character) {
    const int stroke = std::max(2, size / 10);
    drawFrame(image, {left, top, left + size, top + size}, stroke, 0);
    const auto code = static_cast<unsigned>(character);
    for (unsigned bit = 0; bit < 6; ++bit) {
        if ((code >> bit) % 2 == 1) {
            const int y = top + (static_cast<int>(bit) + 1) * size / 8;
            fill(image, {left, y, left + size / 2, y + stroke}, 0);
        } else {
            const int x = left + size / 2 + static_cast<int>(bit) * size / 16;
            fill(image, {x, top, x + stroke, top + size}, 0);
        }
    }
}

inline FoundLines pictureOf(const std::u32string& text) {
    GrayImage image(static_cast<int>(text.size()) * em + 40, 64, 255);
    for (std::size_t i = 0; i < text.size(); ++i) {
        drawForm(image, 20 + static_cast<int>(i) * em, 20, em - 4, text[i]);
    }
    FoundLines found;
    found.ink = findInk(image);
    found.lines = {{{20, 20, 20 + static_cast<int>(text.size()) * em - 4, 20 + em - 4}}};
    found.image = std::move(image);
    return found;
}

/// Answers prepared texts in turn and draws the forms from above.
class FakeReader : public LineReader {
  public:
    std::map<ScriptModel, std::deque<std::vector<std::string>>> texts;
    int reads = 0;
    int begun = 0;          ///< Lines that are to be read beside other work.
    bool canBegin = false;  ///< Whether there is anybody to do that.
    int comparisons = 0;
    float confidence = 0.97F;
    bool hasFonts = true;
    std::u32string glyphs;  ///< Whose forms are at hand for `matchCells`.

    std::optional<LineReading> read(const GrayImage& line, ScriptModel model) override {
        ++reads;
        auto& answers = texts[model];
        if (answers.empty()) {
            return std::nullopt;
        }
        const std::vector<std::string> text = answers.front();
        if (answers.size() > 1) {
            answers.pop_front();
        }
        LineReading reading;
        const double width =
            (line.width() - 2.0 * LineImage::margin) / static_cast<double>(text.size());
        for (std::size_t i = 0; i < text.size(); ++i) {
            const double left = LineImage::margin + static_cast<double>(i) * width;
            reading.push_back({text[i], confidence, left, left + width});
        }
        return reading;
    }

    bool begin(const GrayImage& /*line*/, ScriptModel /*model*/) override {
        begun += canBegin ? 1 : 0;
        return canBegin;
    }

    std::optional<GrayImage> drawCharacter(char32_t character, ScriptModel /*style*/) override {
        if (!hasFonts) {
            return std::nullopt;
        }
        GrayImage image(48, 48, 255);
        drawForm(image, 4, 4, 40, character);
        return image;
    }

    std::optional<MatchedCells> matchCells(const CellsToMatch& request) override {
        ++comparisons;
        if (glyphs.empty()) {
            return std::nullopt;
        }
        MatchedCells result;
        for (const CellToMatch& cell : request.cells) {
            GrayImage cut(cell.cell.width(), request.strip.height());
            for (int y = 0; y < cut.height(); ++y) {
                std::copy_n(request.strip.row(y) + cell.cell.left, cut.width(), cut.row(y));
            }
            const InkCorrelation ink(cut);
            std::vector<GlyphMatch> matches;
            for (const char32_t glyph : glyphs) {
                GrayImage drawn(em - 4, em - 4, 255);
                drawForm(drawn, 0, 0, em - 4, glyph);
                const float exact = ink.with(drawn);
                matches.push_back({glyph, exact, exact});
                result.fontFit = std::max(result.fontFit, exact);
            }
            std::sort(matches.begin(), matches.end(),
                      [](const auto& a, const auto& b) { return a.exact > b.exact; });
            result.cells.push_back(std::move(matches));
        }
        return result;
    }
};

}  // namespace velmora
