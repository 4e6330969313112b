// SPDX-License-Identifier: MIT
#include "Tests/Desktop/Windows/AccessibleTree.h"

#include <unistd.h>

#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusVariant>
#include <QString>
#include <QVariant>
#include <cstdint>

namespace velmora::test {

namespace {

// Bits of the set of states, by the number that the protocol gives them.
constexpr unsigned focusableBit = 11;
constexpr unsigned showingBit = 25;
constexpr int deepest = 24;

struct Reference {
    QString service;
    QString path;
};

QVariant answer(const QDBusConnection& bus, const Reference& object, const QString& interface,
                const QString& method, const QVariantList& arguments = {}) {
    QDBusMessage call =
        QDBusMessage::createMethodCall(object.service, object.path, interface, method);
    call.setArguments(arguments);
    return bus.call(call).arguments().value(0);
}

const QString accessible = QStringLiteral("org.a11y.atspi.Accessible");

QVariant property(const QDBusConnection& bus, const Reference& object, const QString& name) {
    return answer(bus, object, QStringLiteral("org.freedesktop.DBus.Properties"),
                  QStringLiteral("Get"), {accessible, name})
        .value<QDBusVariant>()
        .variant();
}

std::vector<Reference> childrenOf(const QDBusConnection& bus, const Reference& object) {
    std::vector<Reference> result;
    const QVariant list = answer(bus, object, accessible, QStringLiteral("GetChildren"));
    if (!list.canConvert<QDBusArgument>()) {
        return result;
    }
    const auto argument = list.value<QDBusArgument>();
    argument.beginArray();
    while (!argument.atEnd()) {
        QString service;
        QDBusObjectPath path;
        argument.beginStructure();
        argument >> service >> path;
        argument.endStructure();
        result.push_back({service, path.path()});
    }
    argument.endArray();
    return result;
}

bool hasState(const QDBusConnection& bus, const Reference& object, unsigned bit) {
    const QVariant list = answer(bus, object, accessible, QStringLiteral("GetState"));
    const auto argument = list.value<QDBusArgument>();
    std::vector<std::uint32_t> words;
    argument.beginArray();
    while (!argument.atEnd()) {
        std::uint32_t word = 0;
        argument >> word;
        words.push_back(word);
    }
    argument.endArray();
    return bit / 32 < words.size() && (words[bit / 32] >> (bit % 32) & 1U) != 0;
}

AccessibleTree read(const QDBusConnection& bus, const Reference& object, int depth) {
    AccessibleTree tree;
    tree.name = property(bus, object, QStringLiteral("Name")).toString().toStdString();
    tree.role =
        answer(bus, object, accessible, QStringLiteral("GetRoleName")).toString().toStdString();
    tree.focusable = hasState(bus, object, focusableBit);
    tree.showing = hasState(bus, object, showingBit);
    if (depth < deepest) {
        for (const Reference& child : childrenOf(bus, object)) {
            tree.children.push_back(read(bus, child, depth + 1));
        }
    }
    return tree;
}

}  // namespace

AccessibleTree AccessibleTree::ofProgram(const std::string& name) {
    const QString connection = QStringLiteral("accessible-tree");
    AccessibleTree result;
    {
        const QString address =
            answer(QDBusConnection::sessionBus(),
                   {QStringLiteral("org.a11y.Bus"), QStringLiteral("/org/a11y/bus")},
                   QStringLiteral("org.a11y.Bus"), QStringLiteral("GetAddress"))
                .toString();
        const QDBusConnection bus = QDBusConnection::connectToBus(address, connection);
        const Reference desktop{QStringLiteral("org.a11y.atspi.Registry"),
                                QStringLiteral("/org/a11y/atspi/accessible/root")};
        for (const Reference& program : childrenOf(bus, desktop)) {
            // This process would wait for itself.
            if (bus.interface()->servicePid(program.service) != static_cast<uint>(getpid()) &&
                property(bus, program, QStringLiteral("Name")).toString().toStdString() == name) {
                result = read(bus, program, 0);
            }
        }
    }
    QDBusConnection::disconnectFromBus(connection);
    return result;
}

std::vector<std::string> AccessibleTree::controls() const {
    std::vector<std::string> result;
    // The toolkit lets assistive programs go to texts as well.
    if (focusable && showing && role != "label") {
        result.push_back(role + ": " + name);
    }
    for (const AccessibleTree& child : children) {
        for (std::string& line : child.controls()) {
            result.push_back(std::move(line));
        }
    }
    return result;
}

const AccessibleTree* AccessibleTree::find(const std::string& wantedRole,
                                           const std::string& wantedName) const {
    if (role == wantedRole && name == wantedName && showing) {
        return this;
    }
    for (const AccessibleTree& child : children) {
        if (const AccessibleTree* const found = child.find(wantedRole, wantedName)) {
            return found;
        }
    }
    return nullptr;
}

std::string AccessibleTree::text(int depth) const {
    std::string result = std::string(static_cast<std::size_t>(2 * depth), ' ') + role + ": " +
                         name + (focusable ? " (focusable)" : "") + (showing ? "" : " (hidden)") +
                         "\n";
    for (const AccessibleTree& child : children) {
        result += child.text(depth + 1);
    }
    return result;
}

}  // namespace velmora::test
