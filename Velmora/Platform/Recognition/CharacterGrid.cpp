// SPDX-License-Identifier: MIT
#include "Velmora/Platform/Recognition/CharacterGrid.h"

#include <algorithm>
#include <cmath>
#include <iterator>

#include "Velmora/Platform/Recognition/CodePoint.h"

namespace velmora {

namespace {

constexpr double offGrid = 0.2;    ///< Of the pitch, that a certain character may be off.
constexpr double overhang = 0.35;  ///< Of the pitch, beyond the ink at the ends of a line.
constexpr int farthest = 4;        ///< Cells from a certain character.

bool isHanText(const std::string& text) {
    return isHan(firstCodePoint(text));
}

CharacterCell cellAround(double middle, double pitch) {
    const int left = static_cast<int>(std::lround(middle - pitch / 2));
    return {left, left + static_cast<int>(std::lround(pitch))};
}

/// Something between two places is not as it should be: a character that is not certain, or fewer
/// or more than there is room for.
bool isDoubtful(const PlacedLine& line, std::size_t first, std::size_t last, std::size_t room) {
    bool doubtful = last - first != room;
    for (std::size_t i = first; i < last; ++i) {
        doubtful = doubtful || isHanText(line[i].text);
    }
    return doubtful;
}

/// How far from a whole number of cells a gap may be. Where characters were read in it, how many
/// there are is in doubt, but not that they are there.
double mostOff(const PlacedLine& line, std::size_t first, std::size_t last) {
    for (std::size_t i = first; i < last; ++i) {
        if (!isHanText(line[i].text)) {
            return offGrid;
        }
    }
    return first < last ? 0.5 : offGrid;
}

}  // namespace

double pitchOf(const PlacedLine& line) {
    std::vector<double> distances;
    for (std::size_t i = 1; i < line.size(); ++i) {
        const PlacedCharacter& before = line[i - 1];
        if (isHanText(before.text) && isHanText(line[i].text) && before.cell.width() > 0 &&
            line[i].cell.width() > 0) {
            distances.push_back(line[i].cell.middle() - before.cell.middle());
        }
    }
    if (distances.empty()) {
        double widest = 0;
        for (const PlacedCharacter& character : line) {
            widest = isHanText(character.text) ? std::max<double>(widest, character.cell.width())
                                               : widest;
        }
        return widest;
    }
    const auto middle = distances.begin() + static_cast<std::ptrdiff_t>(distances.size() / 2);
    std::nth_element(distances.begin(), middle, distances.end());
    // The mean of what is about the middle tells fractions of a pixel.
    double sum = 0;
    int count = 0;
    for (const double distance : distances) {
        if (std::fabs(distance - *middle) <= 2) {
            sum += distance;
            ++count;
        }
    }
    return sum / count;
}

double pitchOfCertain(const PlacedLine& line, const std::vector<bool>& certain, double pitch) {
    double sum = 0;
    int count = 0;
    for (std::size_t i = 1; i < line.size(); ++i) {
        const double distance = line[i].cell.middle() - line[i - 1].cell.middle();
        if (certain[i - 1] && certain[i] && std::fabs(distance - pitch) <= offGrid * pitch) {
            sum += distance;
            ++count;
        }
    }
    return count > 0 ? sum / count : pitch;
}

std::vector<CharacterCell> cellsOnGrid(const PlacedLine& line, const std::vector<bool>& certain,
                                       const ReadingWindow& window, double pitch) {
    std::vector<CharacterCell> cells;
    std::vector<std::size_t> anchors;
    for (std::size_t i = window.first; i < window.last; ++i) {
        if (certain[i]) {
            anchors.push_back(i);
        }
    }
    if (anchors.empty() || pitch < 4) {
        return cells;
    }
    for (std::size_t k = 1; k < anchors.size(); ++k) {
        const double left = line[anchors[k - 1]].cell.middle();
        const double distance = line[anchors[k]].cell.middle() - left;
        const int steps = static_cast<int>(std::lround(distance / pitch));
        if (steps < 2 || steps > 2 * farthest ||
            std::fabs(distance / pitch - steps) > mostOff(line, anchors[k - 1] + 1, anchors[k]) ||
            !isDoubtful(line, anchors[k - 1] + 1, anchors[k],
                        static_cast<std::size_t>(steps - 1))) {
            continue;
        }
        for (int step = 1; step < steps; ++step) {
            cells.push_back(cellAround(left + distance * step / steps, pitch));
        }
    }
    const auto beyond = [&](std::size_t anchor, int direction) {
        for (int step = 1; step <= farthest; ++step) {
            const double middle = line[anchor].cell.middle() + direction * step * pitch;
            const CharacterCell cell = cellAround(middle, pitch);
            if (cell.left < window.box.left - overhang * pitch ||
                cell.right > window.box.right + overhang * pitch) {
                break;
            }
            cells.push_back(cell);
        }
    };
    if (anchors.front() > window.first) {
        beyond(anchors.front(), -1);
    }
    if (anchors.back() + 1 < window.last ||
        window.box.right - line[anchors.back()].cell.right > pitch / 2) {
        beyond(anchors.back(), 1);
    }
    return cells;
}

void replaceWithin(PlacedLine& line, const PlacedCharacter& character) {
    std::erase_if(line, [&](const PlacedCharacter& other) {
        return other.cell.middle() >= character.cell.left &&
               other.cell.middle() < character.cell.right;
    });
    const auto place = std::find_if(line.begin(), line.end(), [&](const PlacedCharacter& other) {
        return other.cell.middle() > character.cell.middle();
    });
    const auto inserted = line.insert(place, character);
    const int nearby = static_cast<int>(overhang * character.cell.width());
    if (inserted != line.begin()) {
        int& end = std::prev(inserted)->cell.right;
        end = character.cell.left - end < nearby ? std::max(end, character.cell.left) : end;
    }
    if (const auto next = std::next(inserted); next != line.end()) {
        int& begin = next->cell.left;
        begin =
            begin - character.cell.right < nearby ? std::min(begin, character.cell.right) : begin;
    }
}

}  // namespace velmora
