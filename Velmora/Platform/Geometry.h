// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>
#include <cmath>

namespace velmora {

/// A position in points. Which origin it counts from is said wherever one is handed over; the two
/// spaces are described in ScreenGeometry.h.
struct Point {
    double x = 0;
    double y = 0;

    bool operator==(const Point&) const = default;
};

/// A width and a height in points or pixels.
struct Size {
    double width = 0;
    double height = 0;

    bool operator==(const Size&) const = default;
};

/// A rectangle by its corner of least x and y. Works the same whether y grows up or down.
struct Rect {
    double x = 0;
    double y = 0;
    double width = 0;
    double height = 0;

    constexpr double minX() const { return x; }
    constexpr double minY() const { return y; }
    constexpr double maxX() const { return x + width; }
    constexpr double maxY() const { return y + height; }
    constexpr double midX() const { return x + width / 2; }
    constexpr double midY() const { return y + height / 2; }
    constexpr Size size() const { return {width, height}; }

    /// Neither dimension is positive enough to hold a point.
    constexpr bool isEmpty() const { return !(width > 0) || !(height > 0); }

    bool isFinite() const {
        return std::isfinite(x) && std::isfinite(y) && std::isfinite(width) &&
               std::isfinite(height);
    }

    /// Grown on both sides by these amounts (shrunk where negative).
    constexpr Rect grownBy(double dx, double dy) const {
        return {x - dx, y - dy, width + 2 * dx, height + 2 * dy};
    }
    constexpr Rect grownBy(double d) const { return grownBy(d, d); }

    /// Half-open: the edges of least x and y belong to the rectangle, the others do not.
    constexpr bool contains(Point p) const {
        return p.x >= minX() && p.x < maxX() && p.y >= minY() && p.y < maxY();
    }

    /// True when the two share an area; touching edges share none.
    constexpr bool intersects(const Rect& other) const {
        return !isEmpty() && !other.isEmpty() && minX() < other.maxX() && other.minX() < maxX() &&
               minY() < other.maxY() && other.minY() < maxY();
    }

    /// The shared area; an empty rectangle where there is none.
    constexpr Rect intersection(const Rect& other) const {
        const double left = std::max(minX(), other.minX());
        const double top = std::max(minY(), other.minY());
        const double right = std::min(maxX(), other.maxX());
        const double bottom = std::min(maxY(), other.maxY());
        if (!(right > left) || !(bottom > top)) {
            return {};
        }
        return {left, top, right - left, bottom - top};
    }

    /// The smallest rectangle that holds both.
    constexpr Rect united(const Rect& other) const {
        const double left = std::min(minX(), other.minX());
        const double top = std::min(minY(), other.minY());
        return {left, top, std::max(maxX(), other.maxX()) - left,
                std::max(maxY(), other.maxY()) - top};
    }

    /// Grown outward to whole numbers.
    Rect integral() const {
        const double left = std::floor(minX());
        const double top = std::floor(minY());
        return {left, top, std::ceil(maxX()) - left, std::ceil(maxY()) - top};
    }

    bool operator==(const Rect&) const = default;
};

}  // namespace velmora
