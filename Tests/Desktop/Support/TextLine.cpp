// SPDX-License-Identifier: MIT
#include "Tests/Desktop/Support/TextLine.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "Tests/Desktop/Support/InkMap.h"

namespace velmora::test {

namespace {

/// Ink this near belongs to one line: the gap between two characters, in squares of the grid.
constexpr int squareSize = 4;
constexpr int reach = 3;

Rect pixelAt(int x, int y) {
    return {static_cast<double>(x), static_cast<double>(y), 1, 1};
}

std::optional<Rect> inkOf(const InkMap& ink, int left, int top, int right, int bottom) {
    std::optional<Rect> box;
    for (int y = std::max(top, 0); y < std::min(bottom, ink.height()); ++y) {
        for (int x = std::max(left, 0); x < std::min(right, ink.width()); ++x) {
            if (ink.at(x, y)) {
                box = box ? box->united(pixelAt(x, y)) : pixelAt(x, y);
            }
        }
    }
    return box;
}

/// Boxes around ink that lies together, far wider than high as lines are.
class Clusters {
  public:
    explicit Clusters(const InkMap& ink)
        : ink_(ink),
          columns_(ink.width() / squareSize + 1),
          rows_(ink.height() / squareSize + 1),
          waiting_(static_cast<std::size_t>(columns_) * static_cast<std::size_t>(rows_)) {
        for (int y = 0; y < ink.height(); ++y) {
            for (int x = 0; x < ink.width(); ++x) {
                if (ink.at(x, y)) {
                    waiting_[square(x / squareSize, y / squareSize)] = true;
                }
            }
        }
    }

    std::vector<Rect> boxes() {
        std::vector<Rect> result;
        for (int row = 0; row < rows_; ++row) {
            for (int column = 0; column < columns_; ++column) {
                if (waiting_[square(column, row)]) {
                    const Rect area = follow(column, row);
                    if (const auto box = inkOf(
                            ink_, static_cast<int>(area.minX()), static_cast<int>(area.minY()),
                            static_cast<int>(area.maxX()), static_cast<int>(area.maxY()))) {
                        result.push_back(*box);
                    }
                }
            }
        }
        return result;
    }

  private:
    std::size_t square(int column, int row) const {
        return static_cast<std::size_t>(row) * static_cast<std::size_t>(columns_) +
               static_cast<std::size_t>(column);
    }

    Rect follow(int column, int row) {
        std::vector<std::pair<int, int>> open{{column, row}};
        waiting_[square(column, row)] = false;
        Rect area = squareArea(column, row);
        while (!open.empty()) {
            const auto [x, y] = open.back();
            open.pop_back();
            area = area.united(squareArea(x, y));
            for (int dy = -1; dy <= 1; ++dy) {
                for (int dx = -reach; dx <= reach; ++dx) {
                    const int nextX = x + dx;
                    const int nextY = y + dy;
                    if (nextX >= 0 && nextX < columns_ && nextY >= 0 && nextY < rows_ &&
                        waiting_[square(nextX, nextY)]) {
                        waiting_[square(nextX, nextY)] = false;
                        open.emplace_back(nextX, nextY);
                    }
                }
            }
        }
        return area;
    }

    static Rect squareArea(int column, int row) {
        return {static_cast<double>(column) * squareSize, static_cast<double>(row) * squareSize,
                squareSize, squareSize};
    }

    const InkMap& ink_;
    int columns_;
    int rows_;
    std::vector<bool> waiting_;
};

bool looksLikeLine(const Rect& box, std::size_t characters) {
    const double pitch = box.width / static_cast<double>(characters);
    return box.height >= 8 && box.height <= 48 && pitch > 0.8 * box.height &&
           pitch < 1.7 * box.height;
}

std::vector<Rect> equalLines(const std::vector<Rect>& boxes, std::size_t characters,
                             std::size_t count) {
    for (const Rect& first : boxes) {
        std::vector<Rect> group;
        for (const Rect& box : boxes) {
            if (looksLikeLine(box, characters) && std::abs(box.x - first.x) <= 4 &&
                std::abs(box.width - first.width) <= 5) {
                group.push_back(box);
            }
        }
        if (group.size() == count) {
            std::sort(group.begin(), group.end(),
                      [](const Rect& a, const Rect& b) { return a.y < b.y; });
            return group;
        }
    }
    return {};
}

/// How much ink the columns of all lines hold together.
std::vector<int> columnInk(const InkMap& ink, const std::vector<Rect>& lines) {
    std::vector<int> columns(static_cast<std::size_t>(ink.width()));
    for (const Rect& line : lines) {
        for (int y = static_cast<int>(line.minY()); y < static_cast<int>(line.maxY()); ++y) {
            for (int x = 0; x < ink.width(); ++x) {
                columns[static_cast<std::size_t>(x)] += ink.at(x, y) ? 1 : 0;
            }
        }
    }
    return columns;
}

struct Grid {
    double left = 0;
    double pitch = 0;
};

/// The even grid whose boundaries run through the least ink; the middle of those that are equal.
Grid fitGrid(const std::vector<int>& columns, const std::vector<Rect>& lines,
             std::size_t characters) {
    double begin = lines.front().minX();
    double end = lines.front().maxX();
    for (const Rect& line : lines) {
        begin = std::min(begin, line.minX());
        end = std::max(end, line.maxX());
    }
    const double n = static_cast<double>(characters);
    long least = std::numeric_limits<long>::max();
    Grid sum;
    int equals = 0;
    for (double left = begin - 3; left <= begin + 0.01; left += 0.25) {
        for (double right = end; right <= end + 3.01; right += 0.25) {
            const double pitch = (right - left) / n;
            long crossed = 0;
            for (std::size_t boundary = 1; boundary < characters; ++boundary) {
                const double x = left + pitch * static_cast<double>(boundary);
                const auto column = static_cast<std::size_t>(std::floor(x));
                crossed += columns.at(column) + columns.at(column - 1);
            }
            if (crossed < least) {
                least = crossed;
                sum = {};
                equals = 0;
            }
            if (crossed == least) {
                sum.left += left;
                sum.pitch += pitch;
                ++equals;
            }
        }
    }
    return {sum.left / equals, sum.pitch / equals};
}

}  // namespace

Rect TextLine::cells(std::size_t first, std::size_t count) const {
    return {left + pitch * static_cast<double>(first), ink.y, pitch * static_cast<double>(count),
            ink.height};
}

Point TextLine::middle(std::size_t position) const {
    const Rect cell = cells(position);
    return {std::floor(cell.midX()), std::floor(cell.midY())};
}

std::optional<std::vector<TextLine>> findTextLines(const Image& picture, Point origin,
                                                   std::size_t count, std::size_t characters) {
    const InkMap ink(picture);
    const std::vector<Rect> boxes = equalLines(Clusters(ink).boxes(), characters, count);
    if (boxes.empty()) {
        return std::nullopt;
    }
    const Grid grid = fitGrid(columnInk(ink, boxes), boxes, characters);
    std::vector<TextLine> lines;
    for (const Rect& box : boxes) {
        lines.push_back({{origin.x + box.x, origin.y + box.y, box.width, box.height},
                         origin.x + grid.left,
                         grid.pitch});
    }
    return lines;
}

std::optional<Rect> inkInside(const Image& picture, Point origin, const Rect& part) {
    const auto box = inkOf(InkMap(picture), static_cast<int>(std::floor(part.minX() - origin.x)),
                           static_cast<int>(std::floor(part.minY() - origin.y)),
                           static_cast<int>(std::ceil(part.maxX() - origin.x)),
                           static_cast<int>(std::ceil(part.maxY() - origin.y)));
    if (!box) {
        return std::nullopt;
    }
    return Rect{box->x + origin.x, box->y + origin.y, box->width, box->height};
}

}  // namespace velmora::test
