// SPDX-License-Identifier: MIT
#pragma once

#include <QList>
#include <optional>

#include "Velmora/Platform/Linux/AtSpi/AtSpiBus.h"
#include "Velmora/Platform/Linux/AtSpi/AtSpiElementState.h"

namespace velmora {

/// Where the characters of an element stand, in the toolkit's own offsets and coordinates. Corrects
/// what toolkits get wrong. Worker thread only.
class AtSpiTextGeometry {
  public:
    AtSpiTextGeometry(AtSpiBus& bus, AtSpiElementState& state, AtSpiDeadline& deadline)
        : bus_(bus), state_(state), deadline_(deadline) {}

    /// The offset of the character whose cell holds the point (capture space); nothing over empty
    /// space.
    std::optional<int> offsetAt(Point capture);

    /// What the characters from..<to cover together. Of many, a sample that includes both ends.
    std::optional<Rect> bounds(int from, int to);

  private:
    bool learnCells();
    bool isSecondHalf(int offset) const;
    std::optional<int> confirmed(Point target, int candidate);
    std::optional<int> search(Point target);
    QList<std::optional<Rect>> cells(const QList<int>& offsets);
    QList<std::optional<Rect>> askedCells(const QList<int>& offsets);
    template <typename Question>
    QList<Question> questions(const QList<int>& offsets) const;
    QList<std::optional<Rect>> answered(const QList<QDBusMessage>& replies) const;
    std::optional<Rect> sampledBounds(int from, int to);

    AtSpiBus& bus_;
    AtSpiElementState& state_;
    AtSpiDeadline& deadline_;
};

}  // namespace velmora
