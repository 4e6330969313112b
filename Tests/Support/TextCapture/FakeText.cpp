// SPDX-License-Identifier: MIT
#include "Tests/Support/TextCapture/FakeText.h"

#include "VelmoraCore/CharacterText.h"

namespace velmora {

Rect FakeText::normalized(const Rect& rect, Size imageSize) {
    return {rect.x / imageSize.width, 1 - rect.maxY() / imageSize.height,
            rect.width / imageSize.width, rect.height / imageSize.height};
}

std::optional<Rect> FakeText::boundingBox(std::size_t from, std::size_t to) const {
    std::optional<Rect> all;
    for (std::size_t index = from; index < to; ++index) {
        if (index >= boxes_.size() || !boxes_[index]) {
            return std::nullopt;
        }
        all = all ? all->united(*boxes_[index]) : *boxes_[index];
    }
    return all ? std::optional(normalized(*all, imageSize_)) : std::nullopt;
}

TextObservation FakeText::line(const std::string& text, float confidence, const Rect& rect,
                               Size imageSize) {
    const CharacterText characters(text);
    const double cell = rect.width / static_cast<double>(characters.count());
    std::vector<std::optional<Rect>> boxes;
    for (std::size_t index = 0; index < characters.count(); ++index) {
        boxes.emplace_back(
            Rect{rect.x + cell * static_cast<double>(index), rect.y, cell, rect.height});
    }
    return {normalized(rect, imageSize),
            {std::make_shared<FakeText>(text, confidence, std::move(boxes), imageSize)}};
}

TextObservation FakeText::lineWithoutBoxes(const std::string& text, float confidence,
                                           const Rect& rect, Size imageSize) {
    return {normalized(rect, imageSize),
            {std::make_shared<FakeText>(text, confidence, std::vector<std::optional<Rect>>(),
                                        imageSize)}};
}

}  // namespace velmora
