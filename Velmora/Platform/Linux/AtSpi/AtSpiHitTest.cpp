// SPDX-License-Identifier: MIT
#include "Velmora/Platform/Linux/AtSpi/AtSpiHitTest.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "Velmora/Platform/Linux/AtSpi/AtSpiConstants.h"
#include "Velmora/Platform/Linux/AtSpi/AtSpiReply.h"
#include "Velmora/Platform/Linux/AtSpi/AtSpiRequest.h"

namespace velmora {

namespace {

constexpr int depthLimit = 60;
constexpr int scanDepthLimit = 4;
constexpr int scanLimit = 400;  // Elements looked at in all, in one hit test.
constexpr int childrenPerScan = 100;
constexpr int enclosingLimit = 3;
constexpr int rootPaneSearchLimit = 16;

/// What is asked of every element that is found, sooner or later.
QList<QDBusMessage> basics(const AtSpiObject& object) {
    return {atspirequest::interfaces(object), atspirequest::role(object),
            atspirequest::parent(object)};
}

}  // namespace

AtSpiHit AtSpiHitTest::textElementAt(const AtSpiWindow& window, Point capture) {
    return withEnclosingText(deepestAt(window, capture), capture);
}

AtSpiHit AtSpiHitTest::deepestAt(const AtSpiWindow& window, Point capture) {
    AtSpiHit hit{window.object, window.space};
    path_ = {hit.object};
    for (int depth = 0; depth < depthLimit && !deadline_.isOver(); ++depth) {
        std::optional<AtSpiObject> child = childAt(hit, capture, depth == 0);
        if (child && *child == hit.object && toolkit_ == AtSpiToolkit::chromium) {
            // It answers from what it found last while the pointer stays inside of that, even if
            // that was the whole page.
            child = scanChildren(hit.object, hit.space, hit.space.targetFromCapture(capture), 0);
        }
        if (!child || path_.contains(*child)) {
            break;
        }
        hit = {*child, spaceBelow(hit, *child)};
        path_.append(*child);
    }
    return hit;
}

std::optional<AtSpiObject> AtSpiHitTest::childAt(const AtSpiHit& hit, Point capture, bool isFirst) {
    const Point target = hit.space.targetFromCapture(capture);
    const AtSpiQuestion question = atspirequest::elementAtPoint(hit.object, hit.space, capture);
    const QList<QDBusMessage> replies = bus_.callAll(
        {question, atspirequest::childCount(hit.object)}, deadline_, basics(hit.object));
    std::optional<AtSpiObject> child = atspireply::object(replies.first());
    if (isFirst && toolkit_ == AtSpiToolkit::gecko && (!child || child->isNull())) {
        // The first question after a page was shown wakes its tree up.
        child = atspireply::object(bus_.callOnce(question.message, deadline_));
    }
    if (child && !child->isNull()) {
        return child;
    }
    if (atspireply::integerProperty(replies.at(1)).value_or(0) < 1) {
        return std::nullopt;
    }
    return scanChildren(hit.object, hit.space, target, 0);
}

bool AtSpiHitTest::isShown(std::uint64_t states) const {
    // GTK 4 sets the other state only, on elements that are shown.
    return hasState(states, AtSpiState::showing) ||
           (toolkit_ == AtSpiToolkit::gtk4 && hasState(states, AtSpiState::visible));
}

std::optional<AtSpiObject> AtSpiHitTest::scanChildren(const AtSpiObject& parent,
                                                      const AtSpiSpace& space, Point target,
                                                      int depth) {
    const QList<AtSpiObject> children =
        atspireply::objects(bus_.call(atspirequest::children(parent), deadline_),
                            std::min(childrenPerScan, scanLimit - scanned_));
    scanned_ += static_cast<int>(children.size());
    QList<AtSpiQuestion> requests;
    for (const AtSpiObject& child : children) {
        requests << atspirequest::states(child) << atspirequest::role(child)
                 << atspirequest::extents(child, space.coordinates());
    }
    const QList<QDBusMessage> replies = bus_.callAll(requests, deadline_);
    QList<AtSpiObject> passedThrough;
    for (qsizetype i = children.size() - 1; i >= 0; --i) {
        if (!isShown(atspireply::states(replies.at(3 * i))) || children.at(i).isNull()) {
            continue;
        }
        const bool isTab = atspireply::unsignedInteger(replies.at(3 * i + 1)) ==
                           static_cast<std::uint32_t>(AtSpiRole::pageTab);
        const std::optional<Rect> extents = atspireply::extents(replies.at(3 * i + 2));
        if (extents && extents->contains(target)) {
            return children.at(i);
        }
        // The place of a tab is that of its handle, but its page is its child.
        if (!extents || isTab) {
            passedThrough.append(children.at(i));
        }
    }
    if (depth < scanDepthLimit) {
        for (const AtSpiObject& child : passedThrough) {
            if (auto found = scanChildren(child, space, target, depth + 1)) {
                return found;
            }
        }
    }
    return std::nullopt;
}

AtSpiSpace AtSpiHitTest::spaceBelow(const AtSpiHit& parent, const AtSpiObject& child) {
    if (toolkit_ != AtSpiToolkit::libreOffice) {
        return parent.space;
    }
    // The office suite's own elements, which begin at the root pane, count from another corner than
    // the toolkit's element that holds them and fills the same place.
    const QList<QDBusMessage> replies =
        bus_.callAll({atspirequest::role(child),
                      atspirequest::extents(parent.object, parent.space.coordinates()),
                      atspirequest::extents(child, parent.space.coordinates())},
                     deadline_);
    const auto role = atspireply::unsignedInteger(replies.at(0));
    const auto outer = atspireply::extents(replies.at(1));
    const auto inner = atspireply::extents(replies.at(2));
    if (role != static_cast<std::uint32_t>(AtSpiRole::rootPane) || !outer || !inner) {
        return parent.space;
    }
    return parent.space.shifted(outer->x - inner->x, outer->y - inner->y);
}

AtSpiSpace AtSpiHitTest::spaceOf(const AtSpiObject& object, const AtSpiSpace& windowSpace) {
    if (toolkit_ != AtSpiToolkit::libreOffice) {
        return windowSpace;
    }
    AtSpiObject child = object;
    for (int i = 0; i < rootPaneSearchLimit; ++i) {
        const QList<QDBusMessage> replies =
            bus_.callAll({atspirequest::role(child), atspirequest::parent(child)}, deadline_);
        const auto parent = atspireply::objectProperty(replies.at(1));
        if (!parent || parent->isNull()) {
            break;
        }
        if (atspireply::unsignedInteger(replies.at(0)) ==
            static_cast<std::uint32_t>(AtSpiRole::rootPane)) {
            return spaceBelow({*parent, windowSpace}, child);
        }
        child = *parent;
    }
    return windowSpace;
}

AtSpiHit AtSpiHitTest::withEnclosingText(AtSpiHit hit, Point capture) {
    const bool isEmpty = !hasText(hit.object);
    if (toolkit_ == AtSpiToolkit::qt && isEmpty) {
        // The viewport of a text lies over it and knows nothing.
        const std::optional<AtSpiObject> parent = parentOf(hit.object);
        return parent && hasText(*parent) ? AtSpiHit{*parent, hit.space} : hit;
    }
    if (toolkit_ == AtSpiToolkit::chromium && !isEmpty &&
        atspireply::unsignedInteger(bus_.call(atspirequest::role(hit.object), deadline_)) ==
            static_cast<std::uint32_t>(AtSpiRole::staticText)) {
        // Runs of one format are elements of their own; the paragraph has the words across them.
        for (int i = 0; i < enclosingLimit; ++i) {
            const std::optional<AtSpiObject> parent = parentOf(hit.object);
            if (!parent || !showsTextAt(*parent, hit.space, capture)) {
                break;
            }
            hit.object = *parent;
        }
    }
    return hit;
}

bool AtSpiHitTest::hasText(const AtSpiObject& object) {
    const QDBusMessage interfaces =
        bus_.callAll({atspirequest::interfaces(object)}, deadline_,
                     {atspirequest::role(object), atspirequest::parent(object)})
            .first();
    if (!atspireply::offersText(interfaces)) {
        return false;
    }
    const QDBusMessage count =
        bus_.callAll({atspirequest::characterCount(object)}, deadline_,
                     {atspirequest::selectionCount(object), atspirequest::selection(object, 0)})
            .first();
    return atspireply::integerProperty(count).value_or(0) > 0;
}

bool AtSpiHitTest::showsTextAt(const AtSpiObject& object, const AtSpiSpace& space, Point capture) {
    if (!atspireply::offersText(bus_.call(atspirequest::interfaces(object), deadline_))) {
        return false;
    }
    const std::optional<int> offset = atspireply::integer(
        bus_.call(atspirequest::offsetAtPoint(object, space, capture), deadline_));
    if (!offset || *offset < 0 || *offset > std::numeric_limits<int>::max() - 1) {
        return false;
    }
    const std::optional<QString> character = atspireply::text(
        bus_.callOnce(atspirequest::text(object, *offset, *offset + 1), deadline_), 4);
    return character && !character->isEmpty() && character->at(0) != QChar(embeddedObject);
}

std::optional<AtSpiObject> AtSpiHitTest::parentOf(const AtSpiObject& object) {
    std::optional<AtSpiObject> parent =
        atspireply::objectProperty(bus_.call(atspirequest::parent(object), deadline_));
    if (!parent || parent->isNull() || parent->bus != object.bus) {
        return std::nullopt;
    }
    return parent;
}

}  // namespace velmora
