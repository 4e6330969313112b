// SPDX-License-Identifier: MIT
#include "Tests/Support/HostileProgram/HostileProgram.h"

#include <signal.h>
#include <unistd.h>

#include <QDBusArgument>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusPendingCall>
#include <QDBusVariant>
#include <QStringList>
#include <QTimer>
#include <algorithm>
#include <cstdio>
#include <limits>

namespace velmora::test {

namespace {

volatile sig_atomic_t hasTurned = 0;

constexpr int left = 40;
constexpr int top = 40;
constexpr int cellWidth = 20;
constexpr int cellHeight = 24;
constexpr int most = std::numeric_limits<int>::max();
constexpr int least = std::numeric_limits<int>::min();
constexpr int paneShift = 30;
constexpr uint textRole = 61;
constexpr uint passwordRole = 40;
constexpr uint frameRole = 23;
constexpr uint paneRole = 46;
constexpr uint applicationRole = 75;
constexpr int hugeSize = 100 * 1024 * 1024;  // Near the most that the bus carries.
constexpr int dripMilliseconds = 60;

const QString rootPath = QStringLiteral("/org/a11y/atspi/accessible/root");
const QString framePath = QStringLiteral("/org/a11y/atspi/accessible/1");
const QString textPath = QStringLiteral("/org/a11y/atspi/accessible/text/0");
const QString panePath = QStringLiteral("/org/a11y/atspi/accessible/2");
const QString officeMode = QStringLiteral("busyOffice");
const QString cornerMode = QStringLiteral("busyCorner");
const QString roleMode = QStringLiteral("busyText");
const QString passwordMode = QStringLiteral("busyPassword");
const QString content = QStringLiteral("我们在学习中文词典");

QVariantList boxed(const QVariant& value) {
    return {QVariant::fromValue(QDBusVariant(value))};
}

QString askedProperty(const QDBusMessage& message) {
    return message.member() == QLatin1String("Get") ? message.arguments().value(1).toString()
                                                    : QString();
}

}  // namespace

QDBusArgument& operator<<(QDBusArgument& argument, const BusReference& reference) {
    argument.beginStructure();
    argument << reference.bus << reference.path;
    argument.endStructure();
    return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, BusReference& reference) {
    argument.beginStructure();
    argument >> reference.bus >> reference.path;
    argument.endStructure();
    return argument;
}

HostileProgram::HostileProgram(QDBusConnection bus, QString mode, QString title, Extents window)
    : bus_(std::move(bus)),
      mode_(std::move(mode)),
      title_(std::move(title)),
      window_(std::move(window)) {
    qDBusRegisterMetaType<BusReference>();
    qDBusRegisterMetaType<QList<BusReference>>();
    qDBusRegisterMetaType<QList<uint>>();
    bus_.registerVirtualObject(QStringLiteral("/org/a11y/atspi"), this, QDBusConnection::SubPath);
    const QString registry = QStringLiteral("org.a11y.atspi.Registry");
    QDBusMessage embed = QDBusMessage::createMethodCall(
        registry, rootPath, QStringLiteral("org.a11y.atspi.Socket"), QStringLiteral("Embed"));
    embed.setArguments({QVariant::fromValue(reference(rootPath))});
    bus_.asyncCall(embed);
}

void HostileProgram::turn() {
    hasTurned = 1;
}

bool HostileProgram::handleMessage(const QDBusMessage& message, const QDBusConnection& bus) {
    const bool lies = hasTurned != 0;
    if (lies && mode_ == QLatin1String("silent")) {
        message.setDelayedReply(true);
        return true;
    }
    if (!lies && isBusy(message)) {
        std::puts(("asked while it is busy: " + mode_.toStdString()).c_str());
        std::fflush(stdout);
        message.setDelayedReply(true);
        return true;
    }
    if (lies && mode_ == QLatin1String("leaves") && message.member() == QLatin1String("GetText")) {
        _exit(0);
    }
    if (lies && mode_ == QLatin1String("vanishes") && isText(message) && ++asked_ > 3) {
        return bus.send(
            message.createErrorReply(QDBusError::UnknownObject, QStringLiteral("gone")));
    }
    std::optional<QVariantList> answer = lies ? lie(message) : std::nullopt;
    if (!answer) {
        answer = honest(message);
    }
    const QDBusMessage reply =
        answer ? message.createReply(*answer)
               : message.createErrorReply(QDBusError::UnknownMethod, QStringLiteral("none"));
    if (lies && mode_ == QLatin1String("drips")) {
        message.setDelayedReply(true);
        QTimer::singleShot(dripMilliseconds * ++asked_, this, [bus, reply] { bus.send(reply); });
        return true;
    }
    return bus.send(reply);
}

bool HostileProgram::isBusy(const QDBusMessage& message) const {
    if (mode_ == officeMode) {
        return message.path() == rootPath && askedProperty(message) == QLatin1String("Name");
    }
    if (mode_ == cornerMode) {
        return message.path() == panePath && message.member() == QLatin1String("GetExtents");
    }
    return (mode_ == roleMode || mode_ == passwordMode) && isText(message) &&
           message.member() == QLatin1String("GetRole");
}

bool HostileProgram::isOffice() const {
    return mode_ == officeMode || mode_ == cornerMode;
}

bool HostileProgram::isText(const QDBusMessage& message) const {
    return message.path().contains(QLatin1String("/text/"));
}

BusReference HostileProgram::reference(const QString& path) const {
    return {bus_.baseService(), QDBusObjectPath(path)};
}

uint HostileProgram::roleOf(const QDBusMessage& message) const {
    if (isText(message)) {
        return mode_ == passwordMode ? passwordRole : textRole;
    }
    return message.path() == rootPath   ? applicationRole
           : message.path() == panePath ? paneRole
                                        : frameRole;
}

QString HostileProgram::childOf(const QString& path) const {
    return mode_ == cornerMode && path == framePath ? panePath : textPath;
}

QString HostileProgram::parentOf(const QString& path) const {
    if (path == framePath || path == rootPath) {
        return rootPath;
    }
    return mode_ == cornerMode && path != panePath ? panePath : framePath;
}

std::optional<QVariantList> HostileProgram::honest(const QDBusMessage& message) const {
    const QString member = message.member();
    const bool isRoot = message.path() == rootPath;
    if (member == QLatin1String("Get")) {
        return honestProperty(message);
    }
    if (member == QLatin1String("GetRole")) {
        return QVariantList{roleOf(message)};
    }
    if (member == QLatin1String("GetState")) {
        const uint focused = mode_ == cornerMode && isText(message) ? 1U << 12U : 0U;
        return QVariantList{
            QVariant::fromValue(QList<uint>{(1U << 25U) | (1U << 30U) | focused, 0})};
    }
    if (member == QLatin1String("GetInterfaces")) {
        QStringList names{QStringLiteral("org.a11y.atspi.Accessible"),
                          QStringLiteral("org.a11y.atspi.Component")};
        if (isText(message)) {
            names.append(QStringLiteral("org.a11y.atspi.Text"));
        }
        return QVariantList{names};
    }
    if (member == QLatin1String("GetChildren")) {
        QList<BusReference> children;
        if (!isText(message)) {
            children.append(reference(isRoot ? framePath : childOf(message.path())));
        }
        return QVariantList{QVariant::fromValue(children)};
    }
    if (member == QLatin1String("GetAccessibleAtPoint")) {
        return QVariantList{QVariant::fromValue(reference(textPath))};
    }
    if (member == QLatin1String("GetExtents")) {
        const auto [x, y, width, height] = window_();
        return QVariantList{x, y - (message.path() == panePath ? paneShift : 0), width, height};
    }
    return isText(message) ? std::optional(honestText(message)) : std::nullopt;
}

std::optional<QVariantList> HostileProgram::honestProperty(const QDBusMessage& message) const {
    const QString name = askedProperty(message);
    if (isOffice() && message.path() == rootPath) {
        if (name == QLatin1String("Name") || name == QLatin1String("ToolkitName")) {
            return boxed(name == QLatin1String("Name") ? QStringLiteral("soffice")
                                                       : QStringLiteral("gtk"));
        }
    }
    if (name == QLatin1String("Name")) {
        return boxed(isText(message) ? QString() : title_);
    }
    if (name == QLatin1String("ToolkitName") || name == QLatin1String("Version")) {
        return boxed(QStringLiteral("Sample"));
    }
    if (name == QLatin1String("ChildCount")) {
        return boxed(isText(message) ? 0 : 1);
    }
    if (name == QLatin1String("Parent")) {
        return boxed(QVariant::fromValue(reference(parentOf(message.path()))));
    }
    if (name == QLatin1String("CharacterCount")) {
        return boxed(isText(message) ? static_cast<int>(content.size()) : 0);
    }
    return name == QLatin1String("CaretOffset") ? std::optional(boxed(0)) : std::nullopt;
}

QVariantList HostileProgram::honestText(const QDBusMessage& message) const {
    const QString member = message.member();
    const int first = message.arguments().value(0).toInt();
    const auto [x, y, width, height] = window_();
    if (member == QLatin1String("GetText")) {
        return {content.mid(first, message.arguments().value(1).toInt() - first)};
    }
    if (member == QLatin1String("GetOffsetAtPoint")) {
        return {(first - x - left) / cellWidth};
    }
    if (member == QLatin1String("GetCharacterExtents")) {
        return {x + left + first * cellWidth, y + top, cellWidth, cellHeight};
    }
    if (member == QLatin1String("GetRangeExtents")) {
        const int length = message.arguments().value(1).toInt() - first;
        return {x + left + first * cellWidth, y + top, length * cellWidth, cellHeight};
    }
    if (member == QLatin1String("GetStringAtOffset")) {
        return {content, 0, static_cast<int>(content.size())};
    }
    if (member == QLatin1String("GetNSelections")) {
        return {0};
    }
    return {-1, -1};
}

QVariantList HostileProgram::next(const QDBusMessage& message) const {
    const QString number = message.path().section(u'/', -1);
    return {QVariant::fromValue(
        reference(QStringLiteral("/org/a11y/atspi/accessible/text/%1").arg(number.toInt() + 1)))};
}

std::optional<QVariantList> HostileProgram::lie(const QDBusMessage& message) {
    if (mode_ == QLatin1String("wrongTypes")) {
        return askedProperty(message).isEmpty() ? QVariantList{QByteArray("x")}
                                                : boxed(QStringList{QStringLiteral("x")});
    }
    if (mode_ == QLatin1String("emptyReplies")) {
        return QVariantList{};
    }
    if (auto answer = lieAboutTree(message)) {
        return answer;
    }
    return isText(message)
               ? mode_ == QLatin1String("places") ? lieAboutPlaces(message) : lieAboutText(message)
               : std::nullopt;
}

std::optional<QVariantList> HostileProgram::lieAboutTree(const QDBusMessage& message) {
    const bool isParent = askedProperty(message) == QLatin1String("Parent");
    if (mode_ == QLatin1String("cyclicParents") && isParent) {
        return boxed(
            QVariant::fromValue(reference(message.path() == framePath ? textPath : framePath)));
    }
    if (mode_ == QLatin1String("endlessParents") && isParent && isText(message)) {
        return boxed(next(message).first());
    }
    if (mode_ == QLatin1String("endlessChildren") &&
        message.member() == QLatin1String("GetAccessibleAtPoint") && isText(message)) {
        return next(message);
    }
    if (mode_ == QLatin1String("manyChildren")) {
        if (message.member() == QLatin1String("GetAccessibleAtPoint")) {
            return QVariantList{QVariant::fromValue(reference(rootPath + QStringLiteral("/null")))};
        }
        if (message.member() == QLatin1String("GetChildren") && message.path() != rootPath) {
            return QVariantList{
                QVariant::fromValue(QList<BusReference>(200000, reference(framePath)))};
        }
        if (askedProperty(message) == QLatin1String("ChildCount")) {
            return boxed(most);
        }
    }
    if (mode_ == QLatin1String("hugeNames") && askedProperty(message) == QLatin1String("Name")) {
        return boxed(QString(hugeSize, u'x'));
    }
    return std::nullopt;
}

std::optional<QVariantList> HostileProgram::lieAboutText(const QDBusMessage& message) {
    const QString member = message.member();
    const bool isCount = askedProperty(message) == QLatin1String("CharacterCount");
    if (mode_ == QLatin1String("hugeText") && member == QLatin1String("GetText")) {
        return QVariantList{QString(hugeSize, u'x')};
    }
    if (mode_ == QLatin1String("hugeCount") && isCount) {
        return boxed(most);
    }
    if (mode_ == QLatin1String("negativeCount") && isCount) {
        return boxed(least);
    }
    if (mode_ == QLatin1String("ranges")) {
        if (member == QLatin1String("GetOffsetAtPoint")) {
            return QVariantList{most};
        }
        if (member == QLatin1String("GetNSelections")) {
            return QVariantList{most};
        }
        if (member == QLatin1String("GetSelection")) {
            return QVariantList{least, most};
        }
    }
    if (mode_ == QLatin1String("oddText") && member == QLatin1String("GetText")) {
        // Longer than the count, pairs, marks that belong to nothing, and what is no character.
        return QVariantList{QStringLiteral("\u0301\U0001F600\U0001F600\uFFFE\uFEFF\uFFFC学\u200D")};
    }
    return std::nullopt;
}

std::optional<QVariantList> HostileProgram::lieAboutPlaces(const QDBusMessage& message) {
    const QString member = message.member();
    constexpr std::array<std::array<int, 4>, 4> places{
        {{least, least, most, most}, {most, most, most, most}, {0, 0, least, -1}, {0, 0, 0, 0}}};
    if (member == QLatin1String("GetExtents") || member == QLatin1String("GetRangeExtents") ||
        member == QLatin1String("GetCharacterExtents")) {
        const auto& [x, y, width, height] = places[static_cast<std::size_t>(asked_++) % 4];
        return QVariantList{x, y, width, height};
    }
    return std::nullopt;
}

}  // namespace velmora::test
