// SPDX-License-Identifier: MIT
#include "Velmora/Platform/Linux/AtSpi/AtSpiTextGeometry.h"

#include <algorithm>
#include <cmath>

#include "Velmora/Platform/Linux/AtSpi/AtSpiQtText.h"
#include "Velmora/Platform/Linux/AtSpi/AtSpiReply.h"
#include "Velmora/Platform/Linux/AtSpi/AtSpiRequest.h"

namespace velmora {

namespace {

constexpr int samplesPerRound = 16;
constexpr int roundLimit = 8;
constexpr int boundsSampleLimit = 64;
constexpr double slack = 1.5;  // Toolkits round cells to whole pixels and leave gaps.

double distance(const Rect& rect, Point point) {
    const double dx = std::max({rect.minX() - point.x, point.x - rect.maxX(), 0.0});
    const double dy = std::max({rect.minY() - point.y, point.y - rect.maxY(), 0.0});
    return std::max(dx, dy);
}

/// Whether a character stands before the point in reading order (−1), after it (1), or on it.
int order(const Rect& cell, Point point) {
    if (cell.contains(point)) {
        return 0;
    }
    if (point.y < cell.minY()) {
        return 1;
    }
    if (point.y >= cell.maxY()) {
        return -1;
    }
    return point.x < cell.minX() ? 1 : -1;
}

/// At most `count` offsets from..<to, evenly spread, both ends included.
QList<int> spread(int from, int to, int count) {
    QList<int> result;
    const int length = to - from;
    if (length <= count) {
        for (int offset = from; offset < to; ++offset) {
            result.append(offset);
        }
        return result;
    }
    for (int i = 0; i < count; ++i) {
        result.append(from + static_cast<int>(std::int64_t(length - 1) * i / (count - 1)));
    }
    return result;
}

}  // namespace

QList<std::optional<Rect>> AtSpiTextGeometry::cells(const QList<int>& offsets) {
    QList<std::optional<Rect>> result = askedCells(offsets);
    if (state_.toolkit != AtSpiToolkit::gecko) {
        return result;
    }
    // Gecko may answer the first question for a character's extents with none.
    QList<int> missing;
    QList<qsizetype> places;
    for (qsizetype i = 0; i < offsets.size(); ++i) {
        if (!result.at(i)) {
            missing.append(offsets.at(i));
            places.append(i);
        }
    }
    const QList<std::optional<Rect>> again = askedCells(missing);
    for (qsizetype i = 0; i < again.size(); ++i) {
        result[places.at(i)] = again.at(i);
    }
    return result;
}

template <typename Question>
QList<Question> AtSpiTextGeometry::questions(const QList<int>& offsets) const {
    QList<Question> result;
    result.reserve(offsets.size());
    for (const int offset : offsets) {
        result.append(
            atspirequest::characterExtents(state_.object, offset, state_.space.coordinates()));
    }
    return result;
}

QList<std::optional<Rect>> AtSpiTextGeometry::answered(const QList<QDBusMessage>& replies) const {
    QList<std::optional<Rect>> result;
    for (const QDBusMessage& reply : replies) {
        std::optional<Rect> cell = atspireply::extents(reply);
        if (cell) {
            cell->x += state_.cellShift.x;
            cell->y += state_.cellShift.y;
        }
        result.append(cell);
    }
    return result;
}

QList<std::optional<Rect>> AtSpiTextGeometry::askedCells(const QList<int>& offsets) {
    return answered(bus_.callOnce(questions<QDBusMessage>(offsets), deadline_));
}

bool AtSpiTextGeometry::learnCells() {
    if (state_.cells == AtSpiCells::unknown) {
        if (state_.toolkit == AtSpiToolkit::qt) {
            learnQtText(bus_, state_, deadline_);
        } else {
            state_.cells = AtSpiCells::right;
        }
    }
    return state_.cells == AtSpiCells::right || state_.cells == AtSpiCells::shifted;
}

bool AtSpiTextGeometry::isSecondHalf(int offset) const {
    // Toolkits that count UTF-16 units give the second half of a pair a cell of its own, on top of
    // the next character's.
    if (!countsUtf16(state_.toolkit) || !state_.content) {
        return false;
    }
    return state_.content->isSecondHalf(offset);
}

std::optional<int> AtSpiTextGeometry::offsetAt(Point capture) {
    if (!learnCells()) {
        return std::nullopt;
    }
    const Point target = state_.space.targetFromCapture(capture);
    // GTK 4 never answers this question.
    if (state_.toolkit == AtSpiToolkit::gtk4) {
        return search(target);
    }
    const std::optional<int> answer = atspireply::integer(
        bus_.call(atspirequest::offsetAtPoint(state_.object, state_.space, capture), deadline_));
    if (answer && *answer >= 0) {
        return confirmed(target, *answer);
    }
    // GTK 3 answers −1 for every place in an entry, whose cells are right.
    return state_.toolkit == AtSpiToolkit::gtk3 ? search(target) : std::nullopt;
}

std::optional<int> AtSpiTextGeometry::confirmed(Point target, int candidate) {
    // Over empty space toolkits name the nearest character, and some the nearest place for a caret,
    // which belongs to the character before.
    QList<int> offsets;
    for (int offset = std::max(candidate - 1, 0);
         offset <= candidate + 1 && offset < state_.characterCount; ++offset) {
        if (!isSecondHalf(offset)) {
            offsets.append(offset);
        }
    }
    const QList<std::optional<Rect>> found = cells(offsets);
    std::optional<int> best;
    double least = slack;
    for (qsizetype i = 0; i < offsets.size(); ++i) {
        if (!found.at(i)) {
            continue;
        }
        if (found.at(i)->contains(target)) {
            return offsets.at(i);
        }
        const double away = distance(*found.at(i), target);
        if (away < least) {
            least = away;
            best = offsets.at(i);
        }
    }
    return best;
}

std::optional<int> AtSpiTextGeometry::search(Point target) {
    // Characters stand in reading order, so a few of them, spread out, tell between which two the
    // point lies.
    int from = 0;
    int to = state_.characterCount;
    for (int round = 0; round < roundLimit && from < to && !deadline_.isOver(); ++round) {
        const QList<int> offsets = spread(from, to, samplesPerRound);
        // Every search in a text begins with the same characters.
        const QList<std::optional<Rect>> found =
            round == 0 ? answered(bus_.callAll(questions<AtSpiQuestion>(offsets), deadline_))
                       : cells(offsets);
        int below = from;
        int above = to;
        for (qsizetype i = 0; i < offsets.size(); ++i) {
            if (!found.at(i)) {
                continue;
            }
            const int side = order(*found.at(i), target);
            if (side == 0) {
                return offsets.at(i);
            }
            if (side > 0) {
                above = offsets.at(i);
                break;
            }
            below = offsets.at(i) + 1;
        }
        if (to - from <= samplesPerRound || (below == from && above == to)) {
            return std::nullopt;
        }
        from = below;
        to = above;
    }
    return std::nullopt;
}

std::optional<Rect> AtSpiTextGeometry::bounds(int from, int to) {
    to = std::min(to, state_.characterCount);
    if (from < 0 || from >= to || !learnCells()) {
        return std::nullopt;
    }
    return sampledBounds(from, to);
}

std::optional<Rect> AtSpiTextGeometry::sampledBounds(int from, int to) {
    std::optional<Rect> result;
    QList<int> offsets = spread(from, to, boundsSampleLimit);
    offsets.removeIf([this](int offset) { return isSecondHalf(offset); });
    for (const std::optional<Rect>& cell : cells(offsets)) {
        if (cell) {
            result = result ? result->united(*cell) : *cell;
        }
    }
    return result;
}

}  // namespace velmora
