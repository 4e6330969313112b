// SPDX-License-Identifier: MIT
#include "Tests/Desktop/Support/InkMap.h"

#include <algorithm>
#include <cstdlib>
#include <unordered_map>

namespace velmora::test {

namespace {

/// No stroke of a text is this long, in pixels.
constexpr int longestStroke = 60;

/// The sum of the differences of the three channels from which on a pixel counts as drawn.
constexpr int visibleDifference = 140;

std::uint32_t commonestColour(const Image& picture) {
    std::unordered_map<std::uint32_t, int> counts;
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            ++counts[picture.row(y)[x]];
        }
    }
    const auto most =
        std::max_element(counts.begin(), counts.end(),
                         [](const auto& a, const auto& b) { return a.second < b.second; });
    return most == counts.end() ? 0 : most->first;
}

int difference(std::uint32_t a, std::uint32_t b) {
    int sum = 0;
    for (const int shift : {0, 8, 16}) {
        sum +=
            std::abs(static_cast<int>((a >> shift) & 0xFF) - static_cast<int>((b >> shift) & 0xFF));
    }
    return sum;
}

}  // namespace

InkMap::InkMap(const Image& picture)
    : width_(picture.width()),
      height_(picture.height()),
      ink_(static_cast<std::size_t>(width_) * static_cast<std::size_t>(height_)) {
    const std::uint32_t background = commonestColour(picture);
    for (int y = 0; y < height_; ++y) {
        for (int x = 0; x < width_; ++x) {
            ink_[index(x, y)] = difference(picture.row(y)[x], background) > visibleDifference;
        }
    }
    removeLongRuns(true);
    removeLongRuns(false);
}

void InkMap::removeLongRuns(bool horizontal) {
    const int lines = horizontal ? height_ : width_;
    const int length = horizontal ? width_ : height_;
    const auto place = [&](int line, int position) {
        return horizontal ? index(position, line) : index(line, position);
    };
    for (int line = 0; line < lines; ++line) {
        int begin = 0;
        for (int position = 0; position <= length; ++position) {
            if (position < length && ink_[place(line, position)]) {
                continue;
            }
            if (position - begin > longestStroke) {
                for (int each = begin; each < position; ++each) {
                    ink_[place(line, each)] = false;
                }
            }
            begin = position + 1;
        }
    }
}

}  // namespace velmora::test
