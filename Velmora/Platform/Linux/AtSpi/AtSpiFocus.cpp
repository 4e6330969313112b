// SPDX-License-Identifier: MIT
#include "Velmora/Platform/Linux/AtSpi/AtSpiFocus.h"

#include "Velmora/Platform/Linux/AtSpi/AtSpiConstants.h"
#include "Velmora/Platform/Linux/AtSpi/AtSpiReply.h"
#include "Velmora/Platform/Linux/AtSpi/AtSpiRequest.h"

namespace velmora {

namespace {

constexpr qsizetype walkLimit = 600;
constexpr int childrenPerElement = 60;
constexpr int levelLimit = 40;

}  // namespace

std::optional<AtSpiObject> findAtSpiFocus(AtSpiBus& bus, const AtSpiApplication& application,
                                          const AtSpiObject& window, AtSpiDeadline& deadline) {
    if (auto told = bus.lastFocus(application.root.bus)) {
        return told;
    }
    // Level by level, each with one round of calls; what is not shown cannot have the focus.
    QList<AtSpiObject> level{window};
    qsizetype walked = 0;
    for (int depth = 0; depth < levelLimit && !level.isEmpty() && walked < walkLimit; ++depth) {
        QList<QDBusMessage> requests;
        for (const AtSpiObject& object : level) {
            requests << atspirequest::states(object) << atspirequest::children(object);
        }
        walked += level.size();
        const QList<QDBusMessage> replies = bus.callAll(requests, deadline);
        QList<AtSpiObject> next;
        for (qsizetype i = 0; i < level.size(); ++i) {
            const std::uint64_t states = atspireply::states(replies.at(2 * i));
            if (hasState(states, AtSpiState::focused)) {
                return level.at(i);
            }
            if (hasState(states, AtSpiState::showing) || hasState(states, AtSpiState::visible)) {
                next += atspireply::objects(replies.at(2 * i + 1), childrenPerElement);
            }
        }
        level = next.first(std::min(next.size(), walkLimit - std::min(walked, walkLimit)));
    }
    return std::nullopt;
}

}  // namespace velmora
