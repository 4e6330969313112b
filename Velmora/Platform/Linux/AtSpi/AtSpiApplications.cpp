// SPDX-License-Identifier: MIT
#include "Velmora/Platform/Linux/AtSpi/AtSpiApplications.h"

#include <algorithm>

#include "Velmora/Platform/Linux/AtSpi/AtSpiReply.h"
#include "Velmora/Platform/Linux/AtSpi/AtSpiRequest.h"

namespace velmora {

namespace {

constexpr int applicationLimit = 512;
constexpr qsizetype nameLimit = 1024;

}  // namespace

AtSpiApplications::AtSpiApplications(AtSpiBus& bus) : bus_(bus) {
    QObject::connect(&bus, &AtSpiBus::programGone, &context_, [this](const QString& name) {
        known_.removeIf([&](const auto& entry) { return entry.value().root.bus == name; });
        processes_.remove(name);
    });
}

std::optional<AtSpiApplication> AtSpiApplications::find(std::int64_t processId,
                                                        AtSpiDeadline& deadline) {
    if (connectionNumber_ != bus_.connectionNumber()) {
        connectionNumber_ = bus_.connectionNumber();
        processes_.clear();
        known_.clear();
    }
    const auto known = known_.constFind(processId);
    if (known != known_.constEnd()) {
        return *known;
    }
    const QList<AtSpiObject> roots = atspireply::objects(
        bus_.callOnce(atspirequest::children(atspirequest::registryRoot()), deadline),
        applicationLimit);
    learnProcesses(roots, deadline);
    for (const AtSpiObject& root : roots) {
        if (processes_.value(root.bus, 0) != processId || root.isNull()) {
            continue;
        }
        if (const auto toolkit = toolkitOf(root, deadline)) {
            return *known_.insert(processId, {root, *toolkit});
        }
    }
    return std::nullopt;
}

void AtSpiApplications::learnProcesses(const QList<AtSpiObject>& roots, AtSpiDeadline& deadline) {
    QHash<QString, std::uint32_t> known;
    QList<QString> unknown;
    QList<QDBusMessage> requests;
    for (const AtSpiObject& root : roots) {
        const auto found = processes_.constFind(root.bus);
        if (found != processes_.constEnd()) {
            known.insert(root.bus, *found);
        } else if (!unknown.contains(root.bus)) {
            unknown.append(root.bus);
            requests.append(atspirequest::processId(root.bus));
        }
    }
    const QList<QDBusMessage> replies = bus_.callOnce(requests, deadline);
    for (qsizetype i = 0; i < unknown.size(); ++i) {
        if (const auto process = atspireply::unsignedInteger(replies.at(i))) {
            known.insert(unknown.at(i), *process);
        }
    }
    processes_ = known;
}

std::optional<AtSpiToolkit> AtSpiApplications::toolkitOf(const AtSpiObject& root,
                                                         AtSpiDeadline& deadline) {
    const QList<QDBusMessage> replies =
        bus_.callOnce({atspirequest::toolkitName(root), atspirequest::toolkitVersion(root),
                       atspirequest::name(root)},
                      deadline);
    // What it is gets remembered, and a program that is still busy with its start may answer the
    // first of these in time and the last one too late: half of the answer would be another
    // toolkit, which counts characters and places otherwise.
    const auto toolkit = atspireply::textProperty(replies.at(0), nameLimit);
    if (!toolkit || std::any_of(replies.begin(), replies.end(), atspireply::isTimeout)) {
        return std::nullopt;
    }
    return atSpiToolkit(*toolkit,
                        atspireply::textProperty(replies.at(1), nameLimit).value_or(QString()),
                        atspireply::textProperty(replies.at(2), nameLimit).value_or(QString()));
}

}  // namespace velmora
