// SPDX-License-Identifier: MIT
#include "Velmora/Platform/Linux/AtSpi/AtSpiReply.h"

#include <QDBusArgument>
#include <QDBusError>
#include <QDBusObjectPath>
#include <QDBusVariant>
#include <cmath>

namespace velmora::atspireply {

namespace {

constexpr double greatestPosition = 200000;
constexpr double greatestExtent = 100000;

bool hasSignature(const QDBusMessage& reply, const char* signature) {
    return reply.type() == QDBusMessage::ReplyMessage &&
           reply.signature() == QLatin1String(signature);
}

/// The value of a property; invalid where there is none.
QVariant propertyValue(const QDBusMessage& reply) {
    if (!hasSignature(reply, "v")) {
        return {};
    }
    return reply.arguments().at(0).value<QDBusVariant>().variant();
}

std::optional<QString> bounded(const QString& text, qsizetype limit) {
    if (text.size() > limit) {
        return std::nullopt;
    }
    return text;
}

/// Reading goes through constant arguments: the others of this class are for writing.
AtSpiObject readObject(const QDBusArgument& argument) {
    AtSpiObject object;
    QDBusObjectPath path;
    argument.beginStructure();
    argument >> object.bus >> path;
    argument.endStructure();
    object.path = path.path();
    return object;
}

std::optional<Rect> plausible(int x, int y, int width, int height) {
    const Rect rect{double(x), double(y), double(width), double(height)};
    if (rect.isEmpty() || rect.width > greatestExtent || rect.height > greatestExtent ||
        std::abs(rect.x) > greatestPosition || std::abs(rect.y) > greatestPosition) {
        return std::nullopt;
    }
    return rect;
}

}  // namespace

std::optional<int> integer(const QDBusMessage& reply) {
    if (!hasSignature(reply, "i")) {
        return std::nullopt;
    }
    return reply.arguments().at(0).toInt();
}

std::optional<int> integerProperty(const QDBusMessage& reply) {
    const QVariant value = propertyValue(reply);
    if (value.typeId() != QMetaType::Int) {
        return std::nullopt;
    }
    return value.toInt();
}

std::optional<std::uint32_t> unsignedInteger(const QDBusMessage& reply) {
    if (!hasSignature(reply, "u")) {
        return std::nullopt;
    }
    return reply.arguments().at(0).toUInt();
}

std::optional<std::pair<int, int>> integerPair(const QDBusMessage& reply) {
    if (!hasSignature(reply, "ii")) {
        return std::nullopt;
    }
    return std::pair{reply.arguments().at(0).toInt(), reply.arguments().at(1).toInt()};
}

std::optional<QString> text(const QDBusMessage& reply, qsizetype limit) {
    if (!hasSignature(reply, "s")) {
        return std::nullopt;
    }
    return bounded(reply.arguments().at(0).toString(), limit);
}

std::optional<QString> textProperty(const QDBusMessage& reply, qsizetype limit) {
    const QVariant value = propertyValue(reply);
    if (value.typeId() != QMetaType::QString) {
        return std::nullopt;
    }
    return bounded(value.toString(), limit);
}

std::optional<AtSpiObject> object(const QDBusMessage& reply) {
    if (!hasSignature(reply, "(so)")) {
        return std::nullopt;
    }
    return readObject(reply.arguments().at(0).value<QDBusArgument>());
}

std::optional<AtSpiObject> objectProperty(const QDBusMessage& reply) {
    const QVariant value = propertyValue(reply);
    if (!value.canConvert<QDBusArgument>()) {
        return std::nullopt;
    }
    const auto argument = value.value<QDBusArgument>();
    if (argument.currentSignature() != QLatin1String("(so)")) {
        return std::nullopt;
    }
    return readObject(argument);
}

QList<AtSpiObject> objects(const QDBusMessage& reply, int limit) {
    QList<AtSpiObject> result;
    if (!hasSignature(reply, "a(so)")) {
        return result;
    }
    const auto argument = reply.arguments().at(0).value<QDBusArgument>();
    argument.beginArray();
    while (!argument.atEnd() && result.size() < limit) {
        result.append(readObject(argument));
    }
    argument.endArray();
    return result;
}

QStringList names(const QDBusMessage& reply) {
    return hasSignature(reply, "as") ? reply.arguments().at(0).toStringList() : QStringList();
}

bool offersText(const QDBusMessage& interfaces) {
    return names(interfaces).contains(QLatin1String("org.a11y.atspi.Text"));
}

std::uint64_t states(const QDBusMessage& reply) {
    if (!hasSignature(reply, "au")) {
        return 0;
    }
    const auto argument = reply.arguments().at(0).value<QDBusArgument>();
    std::uint64_t bits = 0;
    argument.beginArray();
    for (int shift = 0; shift < 64 && !argument.atEnd(); shift += 32) {
        std::uint32_t word = 0;
        argument >> word;
        bits |= std::uint64_t(word) << shift;
    }
    argument.endArray();
    return bits;
}

std::optional<Rect> extents(const QDBusMessage& reply) {
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;
    if (hasSignature(reply, "iiii")) {
        const QVariantList values = reply.arguments();
        return plausible(values.at(0).toInt(), values.at(1).toInt(), values.at(2).toInt(),
                         values.at(3).toInt());
    }
    if (hasSignature(reply, "(iiii)")) {
        const auto argument = reply.arguments().at(0).value<QDBusArgument>();
        argument.beginStructure();
        argument >> x >> y >> width >> height;
        argument.endStructure();
        return plausible(x, y, width, height);
    }
    return std::nullopt;
}

std::optional<Line> line(const QDBusMessage& reply, qsizetype limit) {
    if (!hasSignature(reply, "sii")) {
        return std::nullopt;
    }
    const QVariantList values = reply.arguments();
    const std::optional<QString> content = bounded(values.at(0).toString(), limit);
    const int from = values.at(1).toInt();
    const int to = values.at(2).toInt();
    if (!content || from < 0 || to < from) {
        return std::nullopt;
    }
    return Line{*content, from, to};
}

bool isTimeout(const QDBusMessage& reply) {
    if (reply.type() != QDBusMessage::ErrorMessage) {
        return false;
    }
    const QDBusError::ErrorType error = QDBusError(reply).type();
    return error == QDBusError::NoReply || error == QDBusError::Timeout ||
           error == QDBusError::TimedOut;
}

}  // namespace velmora::atspireply
