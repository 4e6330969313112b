// SPDX-License-Identifier: MIT
#include "Velmora/Platform/Recognition/LineFinder.h"

#include <algorithm>
#include <cstddef>
#include <numeric>

#include "Velmora/Platform/Recognition/Clutter.h"
#include "Velmora/Platform/Recognition/InkComponents.h"

namespace velmora {

namespace {

constexpr std::size_t mostPieces = 6000;
constexpr std::size_t mostGroups = 1200;
constexpr int widestGap = 81;  ///< 0.9 of the tallest ink.
constexpr int leastLineHeight = 7;
constexpr int greatestLineHeight = 80;
constexpr int leastLineWidth = 5;

double squaredDistance(const PixelBox& box, Point focus) {
    const double dx = std::max({0.0, box.left - focus.x, focus.x - box.right});
    const double dy = std::max({0.0, box.top - focus.y, focus.y - box.bottom});
    return dx * dx + dy * dy;
}

void keepNearest(std::vector<PixelBox>& boxes, Point focus, std::size_t limit) {
    if (boxes.size() <= limit) {
        return;
    }
    const auto nearer = [focus](const PixelBox& a, const PixelBox& b) {
        return squaredDistance(a, focus) < squaredDistance(b, focus);
    };
    std::nth_element(boxes.begin(), boxes.begin() + static_cast<std::ptrdiff_t>(limit), boxes.end(),
                     nearer);
    boxes.resize(limit);
}

/// Pieces that stand beside each other: most of the lower one's rows shared, the gap below the
/// height of the taller one.
bool standBeside(const PixelBox& a, const PixelBox& b) {
    const int taller = std::max(a.height(), b.height());
    const int lower = std::min(a.height(), b.height());
    return taller >= 5 && a.columnsBetween(b) <= 0.9 * taller && a.sharedRows(b) >= 0.6 * lower;
}

/// Groups that are one line after all.
bool continueEachOther(const PixelBox& a, const PixelBox& b) {
    const int taller = std::max(a.height(), b.height());
    const int lower = std::min(a.height(), b.height());
    return a.columnsBetween(b) < 0.7 * taller && a.sharedRows(b) > 0.6 * lower;
}

/// Groups one above the other that are parts of the same characters, as in 二 or 吕.
bool belongToSameCharacters(const PixelBox& a, const PixelBox& b) {
    const int gap = a.columnsBetween(b);
    if (gap >= 0 || -gap < 0.5 * std::min(a.width(), b.width())) {
        return false;
    }
    const PixelBox both = a.united(b);
    const int taller = std::max(a.height(), b.height());
    const int lower = std::min(a.height(), b.height());
    const int wider = std::max(a.width(), b.width());
    return -a.sharedRows(b) <= 0.3 * both.height() && lower < 0.45 * both.height() &&
           both.height() < 1.25 * taller + 2 && both.height() < 1.4 * std::max(wider, 8);
}

std::size_t rootOf(std::vector<std::size_t>& parents, std::size_t i) {
    while (parents[i] != i) {
        parents[i] = parents[parents[i]];
        i = parents[i];
    }
    return i;
}

/// Unites the boxes of each set that the relation builds; neighbours within `reach` columns are
/// compared. `boxes` must be sorted by their left edge.
template <typename Relation>
std::vector<PixelBox> unite(const std::vector<PixelBox>& boxes, int reach, Relation related) {
    std::vector<std::size_t> parents(boxes.size());
    std::iota(parents.begin(), parents.end(), std::size_t{0});
    for (std::size_t i = 0; i < boxes.size(); ++i) {
        for (std::size_t j = i + 1; j < boxes.size() && boxes[j].left - boxes[i].right <= reach;
             ++j) {
            if (related(boxes[i], boxes[j])) {
                parents[rootOf(parents, j)] = rootOf(parents, i);
            }
        }
    }
    std::vector<PixelBox> united;
    std::vector<std::size_t> place(boxes.size(), boxes.size());
    for (std::size_t i = 0; i < boxes.size(); ++i) {
        std::size_t& at = place[rootOf(parents, i)];
        if (at == boxes.size()) {
            at = united.size();
            united.push_back(boxes[i]);
        } else {
            united[at] = united[at].united(boxes[i]);
        }
    }
    return united;
}

void sortByLeft(std::vector<PixelBox>& boxes) {
    std::sort(boxes.begin(), boxes.end(),
              [](const PixelBox& a, const PixelBox& b) { return a.left < b.left; });
}

/// Merges groups until nothing changes: each merge can make the next one possible.
std::vector<PixelBox> mergeGroups(std::vector<PixelBox> groups) {
    for (std::size_t before = groups.size() + 1; before != groups.size();) {
        before = groups.size();
        sortByLeft(groups);
        groups = unite(groups, widestGap, [](const PixelBox& a, const PixelBox& b) {
            return continueEachOther(a, b) || belongToSameCharacters(a, b);
        });
    }
    return groups;
}

bool canBeLine(const PixelBox& box) {
    return box.height() >= leastLineHeight && box.height() <= greatestLineHeight &&
           box.width() >= leastLineWidth;
}

}  // namespace

FoundLines findLines(GrayImage image, std::optional<Point> focus) {
    FoundLines found;
    if (image.isEmpty()) {
        return found;
    }
    const Point centre = focus.value_or(Point{image.width() / 2.0, image.height() / 2.0});
    found.ink = findInk(image);
    removeRules(image, found.ink);
    std::vector<PixelBox> pieces = removeClutter(inkComponents(found.ink), image, found.ink);
    keepNearest(pieces, centre, mostPieces);
    sortByLeft(pieces);
    std::vector<PixelBox> groups = unite(pieces, widestGap, standBeside);
    keepNearest(groups, centre, mostGroups);
    for (const PixelBox& box : mergeGroups(std::move(groups))) {
        if (canBeLine(box)) {
            found.lines.push_back({box});
        }
    }
    std::sort(found.lines.begin(), found.lines.end(), [](const TextLine& a, const TextLine& b) {
        return a.box.top != b.box.top ? a.box.top < b.box.top : a.box.left < b.box.left;
    });
    found.image = std::move(image);
    return found;
}

}  // namespace velmora
