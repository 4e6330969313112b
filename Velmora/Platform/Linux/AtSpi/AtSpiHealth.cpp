// SPDX-License-Identifier: MIT
#include "Velmora/Platform/Linux/AtSpi/AtSpiHealth.h"

#include <QDBusPendingCallWatcher>

#include "Velmora/Platform/Linux/AtSpi/AtSpiReply.h"
#include "Velmora/Platform/Linux/AtSpi/AtSpiRequest.h"

namespace velmora {

namespace {

constexpr int pingMilliseconds = 60000;

}  // namespace

bool AtSpiHealth::isLeftAlone(const QString& bus) {
    const auto found = resting_.constFind(bus);
    if (found == resting_.constEnd()) {
        return false;
    }
    if (!found->answered || Clock::now() - found->since < leastRest) {
        return true;
    }
    resting_.erase(found);
    return false;
}

void AtSpiHealth::leaveAlone(const QString& bus, const QDBusConnection& connection) {
    if (resting_.contains(bus)) {
        return;
    }
    resting_.insert(bus, {Clock::now(), false, ++rounds_});
    ping(bus, connection);
}

void AtSpiHealth::forgetAll() {
    resting_.clear();
}

void AtSpiHealth::ping(const QString& bus, const QDBusConnection& connection) {
    // The program's main loop must answer this; a ping of the bus protocol itself would be answered
    // by some toolkits' background threads.
    const AtSpiObject root{bus, QStringLiteral("/org/a11y/atspi/accessible/root")};
    auto* watcher = new QDBusPendingCallWatcher(
        connection.asyncCall(atspirequest::role(root), pingMilliseconds), &watchers_);
    const int round = resting_.value(bus).round;
    QObject::connect(watcher, &QDBusPendingCallWatcher::finished, &watchers_,
                     [this, watcher, bus, connection, round] {
                         watcher->deleteLater();
                         const auto found = resting_.find(bus);
                         if (found == resting_.end() || found->round != round) {
                             return;
                         }
                         if (atspireply::isTimeout(watcher->reply()) && connection.isConnected()) {
                             ping(bus, connection);
                         } else {
                             found->answered = true;
                         }
                     });
}

}  // namespace velmora
