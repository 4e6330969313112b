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

bool saysThatItHasTheFocus(AtSpiBus& bus, const AtSpiObject& object, AtSpiDeadline& deadline) {
    return hasState(atspireply::states(bus.call(atspirequest::states(object), deadline)),
                    AtSpiState::focused);
}

/// People mostly read where they also write: the deepest element under the pointer that says so.
std::optional<AtSpiObject> amongLikely(AtSpiBus& bus, const AtSpiObject& window,
                                       AtSpiDeadline& deadline) {
    const QList<AtSpiObject>& likely = bus.focus().likely();
    if (likely.isEmpty() || likely.first() != window) {
        return std::nullopt;
    }
    QList<QDBusMessage> requests;
    for (const AtSpiObject& object : likely) {
        requests << atspirequest::states(object);
    }
    const QList<QDBusMessage> replies = bus.callOnce(requests, deadline);
    for (qsizetype i = likely.size() - 1; i >= 0; --i) {
        if (hasState(atspireply::states(replies.at(i)), AtSpiState::focused)) {
            return likely.at(i);
        }
    }
    return std::nullopt;
}

/// Level by level, each with one round of calls; what is not shown cannot have the focus.
std::optional<AtSpiObject> walk(AtSpiBus& bus, const AtSpiObject& window, AtSpiDeadline& deadline) {
    QList<AtSpiObject> level{window};
    qsizetype walked = 0;
    for (int depth = 0; depth < levelLimit && !level.isEmpty() && walked < walkLimit; ++depth) {
        QList<QDBusMessage> requests;
        for (const AtSpiObject& object : level) {
            requests << atspirequest::states(object) << atspirequest::children(object);
        }
        walked += level.size();
        const QList<QDBusMessage> replies = bus.callOnce(requests, deadline);
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

}  // namespace

std::optional<AtSpiObject> findAtSpiFocus(AtSpiBus& bus, const AtSpiApplication& application,
                                          const AtSpiObject& window, AtSpiDeadline& deadline) {
    const QString& program = application.root.bus;
    if (auto told = bus.focus().told(program)) {
        return told;
    }
    std::optional<AtSpiObject> seen = bus.focus().seen(program, window);
    if (seen && saysThatItHasTheFocus(bus, *seen, deadline)) {
        return seen;
    }
    std::optional<AtSpiObject> found = amongLikely(bus, window, deadline);
    // Walks through great windows take what a hover may spend on the focus, and all for nothing
    // where nothing has it.
    const auto now = AtSpiFocusMemory::Clock::now();
    if (!found && !bus.focus().searchedInVain(program, window, now)) {
        found = walk(bus, window, deadline);
        if (!found) {
            bus.focus().searchInVain(program, window, now);
        }
    }
    if (found) {
        bus.focus().see(program, window, *found);
    }
    return found;
}

}  // namespace velmora
