// SPDX-License-Identifier: MIT
#pragma once

#include <QDBusMessage>
#include <QList>
#include <QStringList>
#include <cstdint>
#include <optional>
#include <utility>

#include "Velmora/Platform/Geometry.h"
#include "Velmora/Platform/Linux/AtSpi/AtSpiObject.h"

namespace velmora::atspireply {

// What other programs answer, taken only where it has the type that was asked for and a size that
// can be true; everything else is nothing.

std::optional<int> integer(const QDBusMessage& reply);
std::optional<int> integerProperty(const QDBusMessage& reply);
std::optional<std::uint32_t> unsignedInteger(const QDBusMessage& reply);
std::optional<std::pair<int, int>> integerPair(const QDBusMessage& reply);

/// At most this many UTF-16 units; a longer text counts as no answer.
std::optional<QString> text(const QDBusMessage& reply, qsizetype limit);
std::optional<QString> textProperty(const QDBusMessage& reply, qsizetype limit);

std::optional<AtSpiObject> object(const QDBusMessage& reply);
std::optional<AtSpiObject> objectProperty(const QDBusMessage& reply);

/// The first `limit` of them; empty where there is no answer.
QList<AtSpiObject> objects(const QDBusMessage& reply, int limit);

QStringList names(const QDBusMessage& reply);

/// Whether an object that names these interfaces has a text. Others must not be asked about it:
/// some toolkits complain of each such question in their program's log.
bool offersText(const QDBusMessage& interfaces);

/// The states as bits.
std::uint64_t states(const QDBusMessage& reply);

/// With an area, and neither larger nor farther away than any screen.
std::optional<Rect> extents(const QDBusMessage& reply);

struct Line {
    QString text;
    int from = 0;
    int to = 0;
};
std::optional<Line> line(const QDBusMessage& reply, qsizetype limit);

/// Whether the program did not answer in time, in distinction to refusing.
bool isTimeout(const QDBusMessage& reply);

}  // namespace velmora::atspireply
