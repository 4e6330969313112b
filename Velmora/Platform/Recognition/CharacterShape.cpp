// SPDX-License-Identifier: MIT
#include "Velmora/Platform/Recognition/CharacterShape.h"

#include <algorithm>
#include <cmath>

namespace velmora {

namespace {

constexpr int inkBelow = 160;

std::optional<PixelBox> inkBox(const GrayImage& picture) {
    PixelBox box{picture.width(), picture.height(), 0, 0};
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            if (picture.at(x, y) < inkBelow) {
                box = box.united({x, y, x + 1, y + 1});
            }
        }
    }
    return box.isEmpty() ? std::nullopt : std::optional(box);
}

/// The mean darkness (0…1) of the picture inside a rectangle of real coordinates.
double meanDarkness(const GrayImage& picture, double left, double top, double right,
                    double bottom) {
    double sum = 0;
    for (int y = static_cast<int>(std::floor(top)); y < bottom; ++y) {
        const double rows = std::min<double>(bottom, y + 1) - std::max<double>(top, y);
        for (int x = static_cast<int>(std::floor(left)); x < right; ++x) {
            if (x < 0 || y < 0 || x >= picture.width() || y >= picture.height()) {
                continue;
            }
            const double columns = std::min<double>(right, x + 1) - std::max<double>(left, x);
            sum += rows * columns * (255 - picture.at(x, y)) / 255.0;
        }
    }
    return sum / ((right - left) * (bottom - top));
}

}  // namespace

std::optional<CharacterShape> CharacterShape::of(const GrayImage& picture) {
    const std::optional<PixelBox> box = inkBox(picture);
    if (!box) {
        return std::nullopt;
    }
    // One scale for both directions, so that 一 stays flat; a blur makes up for strokes that other
    // fonts put a little elsewhere.
    const double extent = std::max(box->width(), box->height());
    const double step = extent / side;
    const double blur = step * 0.5;
    const double left = (box->left + box->right - extent) / 2;
    const double top = (box->top + box->bottom - extent) / 2;
    CharacterShape shape;
    double sum = 0;
    for (int y = 0; y < side; ++y) {
        for (int x = 0; x < side; ++x) {
            const double value =
                meanDarkness(picture, left + x * step - blur, top + y * step - blur,
                             left + (x + 1) * step + blur, top + (y + 1) * step + blur);
            const int place = y * side + x;
            shape.values_[static_cast<std::size_t>(place)] = static_cast<float>(value);
            sum += value;
        }
    }
    const auto mean = static_cast<float>(sum / (side * side));
    double squares = 0;
    for (float& value : shape.values_) {
        value -= mean;
        squares += static_cast<double>(value) * value;
    }
    if (squares < 1e-9) {
        return std::nullopt;
    }
    const auto length = static_cast<float>(std::sqrt(squares));
    for (float& value : shape.values_) {
        value /= length;
    }
    return shape;
}

double CharacterShape::similarity(const CharacterShape& other) const {
    double sum = 0;
    for (std::size_t i = 0; i < values_.size(); ++i) {
        sum += static_cast<double>(values_[i]) * other.values_[i];
    }
    return sum;
}

std::optional<double> ShapeMatcher::similarity(const CharacterShape& ink, char32_t character) {
    std::optional<double> best;
    for (const ScriptModel style : {ScriptModel::simplified, ScriptModel::traditional}) {
        const auto key = std::pair(character, style);
        auto known = shapes_.find(key);
        if (known == shapes_.end()) {
            if (shapes_.size() >= mostShapes) {
                shapes_.clear();
            }
            // A reader that failed just now may draw it the next time.
            const std::optional<GrayImage> drawn = reader_.drawCharacter(character, style);
            if (!drawn) {
                continue;
            }
            known = shapes_.emplace(key, CharacterShape::of(*drawn)).first;
        }
        if (known->second) {
            const double alike = ink.similarity(*known->second);
            best = best ? std::max(*best, alike) : alike;
        }
    }
    return best;
}

}  // namespace velmora
