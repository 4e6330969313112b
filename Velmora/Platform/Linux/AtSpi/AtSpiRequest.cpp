// SPDX-License-Identifier: MIT
#include "Velmora/Platform/Linux/AtSpi/AtSpiRequest.h"

#include <algorithm>
#include <cmath>

namespace velmora::atspirequest {

namespace {

constexpr char accessible[] = "org.a11y.atspi.Accessible";
constexpr char application[] = "org.a11y.atspi.Application";
constexpr char component[] = "org.a11y.atspi.Component";
constexpr char textInterface[] = "org.a11y.atspi.Text";
constexpr unsigned lineGranularity = 3;

QDBusMessage call(const AtSpiObject& object, const char* interface, const char* method,
                  const QVariantList& arguments = {}) {
    QDBusMessage message = QDBusMessage::createMethodCall(
        object.bus, object.path, QLatin1String(interface), QLatin1String(method));
    message.setArguments(arguments);
    // A name that is gone must not start anything.
    message.setAutoStartService(false);
    return message;
}

/// The pixel that holds the place.
int pixel(double value) {
    return static_cast<int>(std::floor(std::clamp(value, -1e6, 1e6)));
}

QVariantList place(Point target, AtSpiCoordinates coordinates) {
    return {pixel(target.x), pixel(target.y), static_cast<unsigned>(coordinates)};
}

}  // namespace

QDBusMessage property(const AtSpiObject& object, const char* interface, const char* name) {
    return call(object, "org.freedesktop.DBus.Properties", "Get",
                {QString::fromLatin1(interface), QString::fromLatin1(name)});
}

QDBusMessage children(const AtSpiObject& object) {
    return call(object, accessible, "GetChildren");
}

QDBusMessage childCount(const AtSpiObject& object) {
    return property(object, accessible, "ChildCount");
}

QDBusMessage interfaces(const AtSpiObject& object) {
    return call(object, accessible, "GetInterfaces");
}

QDBusMessage name(const AtSpiObject& object) {
    return property(object, accessible, "Name");
}

QDBusMessage parent(const AtSpiObject& object) {
    return property(object, accessible, "Parent");
}

QDBusMessage role(const AtSpiObject& object) {
    return call(object, accessible, "GetRole");
}

QDBusMessage states(const AtSpiObject& object) {
    return call(object, accessible, "GetState");
}

QDBusMessage toolkitName(const AtSpiObject& object) {
    return property(object, application, "ToolkitName");
}

QDBusMessage toolkitVersion(const AtSpiObject& object) {
    return property(object, application, "Version");
}

AtSpiQuestion elementAtPoint(const AtSpiObject& object, const AtSpiSpace& space, Point capture) {
    return {call(object, component, "GetAccessibleAtPoint",
                 place(space.targetFromCapture(capture), space.coordinates())),
            space};
}

QDBusMessage extents(const AtSpiObject& object, AtSpiCoordinates coordinates) {
    return call(object, component, "GetExtents", {static_cast<unsigned>(coordinates)});
}

QDBusMessage caretOffset(const AtSpiObject& object) {
    return property(object, textInterface, "CaretOffset");
}

QDBusMessage characterCount(const AtSpiObject& object) {
    return property(object, textInterface, "CharacterCount");
}

QDBusMessage characterExtents(const AtSpiObject& object, int offset, AtSpiCoordinates coordinates) {
    return call(object, textInterface, "GetCharacterExtents",
                {offset, static_cast<unsigned>(coordinates)});
}

QDBusMessage lineAtOffset(const AtSpiObject& object, int offset) {
    return call(object, textInterface, "GetStringAtOffset", {offset, lineGranularity});
}

AtSpiQuestion offsetAtPoint(const AtSpiObject& object, const AtSpiSpace& space, Point capture) {
    return {offsetAtTarget(object, space.targetFromCapture(capture), space.coordinates()), space};
}

QDBusMessage offsetAtTarget(const AtSpiObject& object, Point target, AtSpiCoordinates coordinates) {
    return call(object, textInterface, "GetOffsetAtPoint", place(target, coordinates));
}

QDBusMessage rangeExtents(const AtSpiObject& object, int from, int to,
                          AtSpiCoordinates coordinates) {
    return call(object, textInterface, "GetRangeExtents",
                {from, to, static_cast<unsigned>(coordinates)});
}

QDBusMessage selection(const AtSpiObject& object, int index) {
    return call(object, textInterface, "GetSelection", {index});
}

QDBusMessage selectionCount(const AtSpiObject& object) {
    return call(object, textInterface, "GetNSelections");
}

QDBusMessage text(const AtSpiObject& object, int from, int to) {
    return call(object, textInterface, "GetText", {from, to});
}

QDBusMessage askedOf(const AtSpiQuestion& question, Point capture) {
    QDBusMessage message = question.message;
    if (question.space) {
        message.setArguments(
            place(question.space->targetFromCapture(capture), question.space->coordinates()));
    }
    return message;
}

AtSpiObject registryRoot() {
    return {QStringLiteral("org.a11y.atspi.Registry"),
            QStringLiteral("/org/a11y/atspi/accessible/root")};
}

QDBusMessage processId(const QString& bus) {
    return call({QStringLiteral("org.freedesktop.DBus"), QStringLiteral("/org/freedesktop/DBus")},
                "org.freedesktop.DBus", "GetConnectionUnixProcessID", {bus});
}

}  // namespace velmora::atspirequest
