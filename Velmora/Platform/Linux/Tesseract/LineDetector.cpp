// SPDX-License-Identifier: MIT
#include "Velmora/Platform/Linux/Tesseract/LineDetector.h"

#include <algorithm>

#include "Velmora/Platform/Recognition/CharacterCells.h"
#include "Velmora/Platform/Recognition/LineFinder.h"
#include "Velmora/Platform/Recognition/ReadText.h"

namespace velmora {

namespace {

/// More than any screen has; of larger pictures the middle is looked at.
constexpr int greatestSide = 4096;

DetectedText describe(const FoundLines& found, const PixelBox& line, const PixelBox& area,
                      const Image& image) {
    DetectedText text;
    text.boundingBox =
        normalizedBox(line.movedBy(area.left, area.top), image.width(), image.height());
    for (const CharacterCell& cell : guessCells(found.ink.columnCounts(line), line.height())) {
        const PixelBox box{line.left + cell.left, line.top, line.left + cell.right, line.bottom};
        text.characterBoxes.push_back(
            normalizedBox(box.movedBy(area.left, area.top), image.width(), image.height()));
    }
    return text;
}

}  // namespace

std::optional<std::vector<DetectedText>> LineDetector::detect(const Image& image) {
    if (image.isEmpty()) {
        return std::nullopt;
    }
    const int width = std::min(image.width(), greatestSide);
    const int height = std::min(image.height(), greatestSide);
    const int left = (image.width() - width) / 2;
    const int top = (image.height() - height) / 2;
    const PixelBox area{left, top, left + width, top + height};
    const FoundLines found = findLines(brightness(image, area));
    std::vector<DetectedText> texts;
    for (const TextLine& line : found.lines) {
        texts.push_back(describe(found, line.box, area, image));
    }
    return texts;
}

}  // namespace velmora
