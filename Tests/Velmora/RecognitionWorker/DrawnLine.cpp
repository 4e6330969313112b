// SPDX-License-Identifier: MIT
#include "Tests/Velmora/RecognitionWorker/DrawnLine.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

namespace velmora::testing {

CellsToMatch drawnLine(GlyphFonts& fonts, const std::u32string& text, const GlyphStyle& style,
                       double em) {
    const int cell = static_cast<int>(std::ceil(style.size)) + 2;
    CellsToMatch line{GrayImage(cell * static_cast<int>(text.size()), cell + 4), em, {}};
    line.em = em > 0 ? em : style.size;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const int left = cell * static_cast<int>(i);
        line.cells.push_back({{left, left + cell}, {}});
        const auto drawn = fonts.draw(text[i], style);
        if (!drawn) {
            continue;
        }
        // In the middle, as far as there is room.
        const int fromX = left + std::max(0, (cell - drawn->width()) / 2);
        const int fromY = std::max(0, (line.strip.height() - drawn->height()) / 2);
        for (int y = 0; y < std::min(drawn->height(), line.strip.height() - fromY); ++y) {
            for (int x = 0; x < std::min(drawn->width(), left + cell - fromX); ++x) {
                line.strip.at(fromX + x, fromY + y) = drawn->at(x, y);
            }
        }
    }
    return line;
}

CellsToMatch roughened(CellsToMatch line, int every) {
    constexpr int change = 120;
    for (int y = 0; y < line.strip.height(); ++y) {
        for (int x = 0; x < line.strip.width(); ++x) {
            if ((x * 3 + y * 5) % every == 0) {
                std::uint8_t& pixel = line.strip.at(x, y);
                pixel = static_cast<std::uint8_t>(pixel > 128 ? pixel - change : pixel + change);
            }
        }
    }
    return line;
}

std::u32string bestOf(const MatchedCells& matches) {
    std::u32string text;
    for (const auto& cell : matches.cells) {
        text += cell.empty() ? U'?' : cell.front().character;
    }
    return text;
}

std::size_t plainFace(const GlyphFonts& fonts) {
    const auto& faces = fonts.faces();
    const auto found = std::find_if(faces.begin(), faces.end(), [](const FontFace& face) {
        return !face.bold && !face.bitmaps;
    });
    return static_cast<std::size_t>(found - faces.begin());
}

}  // namespace velmora::testing
