// SPDX-License-Identifier: MIT
#pragma once

#include <QDBusMessage>
#include <QVariantList>

#include "Velmora/Platform/Linux/AtSpi/AtSpiCoordinates.h"
#include "Velmora/Platform/Linux/AtSpi/AtSpiObject.h"
#include "Velmora/Platform/Linux/AtSpi/AtSpiQuestion.h"

namespace velmora {

/// The calls that are made on the accessibility bus. Every one only reads.
namespace atspirequest {

QDBusMessage property(const AtSpiObject& object, const char* interface, const char* name);

// Accessible
QDBusMessage children(const AtSpiObject& object);
QDBusMessage childCount(const AtSpiObject& object);
QDBusMessage interfaces(const AtSpiObject& object);
QDBusMessage name(const AtSpiObject& object);
QDBusMessage parent(const AtSpiObject& object);
QDBusMessage role(const AtSpiObject& object);
QDBusMessage states(const AtSpiObject& object);

// Application
QDBusMessage toolkitName(const AtSpiObject& object);
QDBusMessage toolkitVersion(const AtSpiObject& object);

// Component
AtSpiQuestion elementAtPoint(const AtSpiObject& object, const AtSpiSpace& space, Point capture);
QDBusMessage extents(const AtSpiObject& object, AtSpiCoordinates coordinates);

// Text
QDBusMessage caretOffset(const AtSpiObject& object);
QDBusMessage characterCount(const AtSpiObject& object);
QDBusMessage characterExtents(const AtSpiObject& object, int offset, AtSpiCoordinates coordinates);
QDBusMessage lineAtOffset(const AtSpiObject& object, int offset);
AtSpiQuestion offsetAtPoint(const AtSpiObject& object, const AtSpiSpace& space, Point capture);
QDBusMessage offsetAtTarget(const AtSpiObject& object, Point target, AtSpiCoordinates coordinates);
QDBusMessage rangeExtents(const AtSpiObject& object, int from, int to,
                          AtSpiCoordinates coordinates);
QDBusMessage selection(const AtSpiObject& object, int index);
QDBusMessage selectionCount(const AtSpiObject& object);
QDBusMessage text(const AtSpiObject& object, int from, int to);

/// A question about a place, asked of another one (capture space).
QDBusMessage askedOf(const AtSpiQuestion& question, Point capture);

// The bus itself and its registry of programs.
AtSpiObject registryRoot();
QDBusMessage processId(const QString& bus);

}  // namespace atspirequest
}  // namespace velmora
