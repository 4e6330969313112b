// SPDX-License-Identifier: MIT
#include "Velmora/Platform/Linux/AtSpi/AtSpiQtText.h"

#include <algorithm>
#include <cmath>

#include "Velmora/Platform/Linux/AtSpi/AtSpiConstants.h"
#include "Velmora/Platform/Linux/AtSpi/AtSpiReply.h"
#include "Velmora/Platform/Linux/AtSpi/AtSpiRequest.h"

namespace velmora {

namespace {

constexpr int charactersLookedAt = 1000;  // Of a text, for one that is drawn.
constexpr int columnsLookedAt = 72;       // Enough for the middles of two large characters.

QDBusMessage cellRequest(const AtSpiElementState& state, int offset) {
    return atspirequest::characterExtents(state.object, offset, state.space.coordinates());
}

QDBusMessage positionRequest(const AtSpiElementState& state, double x, double y) {
    return atspirequest::offsetAtTarget(state.object, {x, y}, state.space.coordinates());
}

/// The offset of the first character that has a cell of some width, which line breaks have not.
int firstDrawn(AtSpiBus& bus, const AtSpiElementState& state, AtSpiDeadline& deadline) {
    // More than there is would be answered with nothing.
    const int count = std::clamp(state.characterCount, 0, charactersLookedAt);
    const QString text =
        atspireply::text(bus.call(atspirequest::text(state.object, 0, count), deadline), count)
            .value_or(QString());
    const auto drawn =
        std::find_if(text.begin(), text.end(), [](QChar each) { return !each.isSpace(); });
    return drawn == text.end() ? 0 : static_cast<int>(drawn - text.begin());
}

/// A text that does not know which character stands in the first one's cell knows no positions.
void learnMultiLine(AtSpiBus& bus, AtSpiElementState& state, AtSpiDeadline& deadline) {
    const int first = firstDrawn(bus, state, deadline);
    const auto cell = atspireply::extents(bus.call(cellRequest(state, first), deadline));
    if (!cell) {
        return;
    }
    const auto position =
        atspireply::integer(bus.call(positionRequest(state, cell->midX(), cell->midY()), deadline));
    if (!deadline.isOver()) {
        state.cells = position.value_or(-1) >= 0 ? AtSpiCells::right : AtSpiCells::none;
    }
}

void learnSingleLine(AtSpiBus& bus, AtSpiElementState& state, const Rect& field,
                     AtSpiDeadline& deadline) {
    QList<AtSpiQuestion> requests;
    for (int column = 0; column < columnsLookedAt; ++column) {
        requests.append(positionRequest(state, field.x + column, field.midY()));
    }
    QList<int> positions;
    for (const QDBusMessage& reply : bus.callAll(requests, deadline)) {
        positions.append(atspireply::integer(reply).value_or(-1));
    }
    double sum = 0;
    int count = 0;
    for (int column = 1; column < columnsLookedAt; ++column) {
        const int before = positions.at(column - 1);
        if (before < 0 || positions.at(column) != before + 1) {
            continue;
        }
        if (const auto cell = atspireply::extents(bus.call(cellRequest(state, before), deadline))) {
            sum += field.x + column - cell->midX();
            state.cellShift.y = (field.height - cell->height) / 2 - (cell->y - field.y);
            ++count;
        }
    }
    if (!deadline.isOver()) {
        state.cells = count > 0 ? AtSpiCells::shifted : AtSpiCells::none;
        state.cellShift.x = count > 0 ? std::round(sum / count) : 0;
    }
}

}  // namespace

void learnQtText(AtSpiBus& bus, AtSpiElementState& state, AtSpiDeadline& deadline) {
    const QList<QDBusMessage> replies =
        bus.callAll({atspirequest::states(state.object),
                     atspirequest::extents(state.object, state.space.coordinates())},
                    deadline);
    const auto field = atspireply::extents(replies.at(1));
    if (hasState(atspireply::states(replies.at(0)), AtSpiState::multiLine)) {
        learnMultiLine(bus, state, deadline);
    } else if (field) {
        learnSingleLine(bus, state, *field, deadline);
    }
}

}  // namespace velmora
