// SPDX-License-Identifier: MIT
#include "Velmora/Platform/Recognition/ReadText.h"

#include <algorithm>

#include "VelmoraCore/CharacterText.h"

namespace velmora {

namespace {

/// What a reader gave as one symbol may be several characters, or a mark that joins the character
/// before it: each character gets the cell of the symbol in which it begins.
std::vector<CharacterCell> cellsOfCharacters(const CharacterText& text, const PlacedLine& line) {
    std::vector<CharacterCell> cells;
    std::size_t symbol = 0;
    std::size_t symbolEnd = line.empty() ? 0 : line[0].text.size();
    for (std::size_t i = 0; i < text.count(); ++i) {
        while (symbol + 1 < line.size() && text.byteOffset(i) >= symbolEnd) {
            ++symbol;
            symbolEnd += line[symbol].text.size();
        }
        cells.push_back(line[symbol].cell);
    }
    return cells;
}

}  // namespace

Rect normalizedBox(const PixelBox& box, int imageWidth, int imageHeight) {
    const double width = std::max(1, imageWidth);
    const double height = std::max(1, imageHeight);
    return {box.left / width, 1 - box.bottom / height, box.width() / width, box.height() / height};
}

ReadText::ReadText(const PlacedLine& characters, float confidence, const PixelBox& line,
                   int imageWidth, int imageHeight)
    : confidence_(confidence),
      line_(normalizedBox(line, imageWidth, imageHeight)),
      imageWidth_(std::max(1, imageWidth)) {
    const CharacterText text(textOf(characters));
    text_ = text.text();
    cells_ = cellsOfCharacters(text, characters);
}

std::optional<Rect> ReadText::boundingBox(std::size_t from, std::size_t to) const {
    if (from >= to || to > cells_.size()) {
        return std::nullopt;
    }
    int left = 0;
    int right = 0;
    for (std::size_t i = from; i < to; ++i) {
        if (cells_[i].width() > 0) {
            left = right > left ? std::min(left, cells_[i].left) : cells_[i].left;
            right = std::max(right, cells_[i].right);
        }
    }
    if (right <= left) {
        return std::nullopt;
    }
    return Rect{left / imageWidth_, line_.y, (right - left) / imageWidth_, line_.height};
}

}  // namespace velmora
