// SPDX-License-Identifier: MIT
#include "Velmora/Platform/Linux/AtSpi/AtSpiElement.h"

#include "Velmora/Platform/Linux/AtSpi/AtSpiConstants.h"
#include "Velmora/Platform/Linux/AtSpi/AtSpiReply.h"
#include "Velmora/Platform/Linux/AtSpi/AtSpiRequest.h"
#include "Velmora/Platform/Linux/AtSpi/AtSpiTextReader.h"

namespace velmora {

namespace {

constexpr qsizetype titleLimit = 20000;

std::optional<std::string> utf8(const std::optional<QString>& text) {
    return text ? std::optional(text->toStdString()) : std::nullopt;
}

bool isWindow(std::optional<std::uint32_t> role) {
    return role == static_cast<std::uint32_t>(AtSpiRole::frame) ||
           role == static_cast<std::uint32_t>(AtSpiRole::window) ||
           role == static_cast<std::uint32_t>(AtSpiRole::dialog) ||
           role == static_cast<std::uint32_t>(AtSpiRole::application);
}

}  // namespace

AtSpiElement::AtSpiElement(std::weak_ptr<AtSpiService> service, std::shared_ptr<AtSpiBudget> budget,
                           AtSpiElementState state)
    : service_(std::move(service)),
      budget_(std::move(budget)),
      state_(std::make_shared<AtSpiElementState>(std::move(state))) {}

template <typename Answer, typename Job>
Answer AtSpiElement::ask(Job job) const {
    const std::shared_ptr<AtSpiService> service = service_.lock();
    if (!service) {
        return {};
    }
    return service->ask<Answer>(
        *budget_, [state = state_, job](AtSpiService::Core& core, AtSpiDeadline& deadline) {
            return core.bus.connectionNumber() == state->connectionNumber
                       ? job(core.bus, *state, deadline)
                       : Answer{};
        });
}

template <typename Answer, typename Read>
Answer AtSpiElement::readText(Read read) const {
    return ask<Answer>([read](AtSpiBus& bus, AtSpiElementState& state, AtSpiDeadline& deadline) {
        AtSpiTextReader reader(bus, state, deadline);
        return read(reader);
    });
}

AccessibilityElement::Pointer AtSpiElement::parent() const {
    using Found = std::optional<AtSpiObject>;
    const Found found =
        ask<Found>([](AtSpiBus& bus, AtSpiElementState& state, AtSpiDeadline& deadline) -> Found {
            const Found parent =
                atspireply::objectProperty(bus.call(atspirequest::parent(state.object), deadline));
            if (!parent || parent->isNull() || parent->bus != state.object.bus) {
                return std::nullopt;
            }
            const QList<QDBusMessage> replies =
                bus.callAll({atspirequest::role(*parent)}, deadline,
                            {atspirequest::parent(*parent), atspirequest::interfaces(*parent)});
            const auto role = atspireply::unsignedInteger(replies.first());
            const bool isProgram = role == static_cast<std::uint32_t>(AtSpiRole::application);
            return role && !isProgram ? parent : std::nullopt;
        });
    if (!found) {
        return nullptr;
    }
    AtSpiElementState state;
    state.object = *found;
    state.toolkit = state_->toolkit;
    state.space = state_->space;
    state.connectionNumber = state_->connectionNumber;
    state.processId = state_->processId;
    state.selections = state_->selections;
    return std::make_shared<AtSpiElement>(service_, budget_, std::move(state));
}

std::optional<std::string> AtSpiElement::selectedText() const {
    return utf8(readText<std::optional<QString>>(
        [](AtSpiTextReader& reader) { return reader.selectedText(); }));
}

std::optional<Utf16Range> AtSpiElement::selectedTextRange() const {
    return readText<std::optional<Utf16Range>>(
        [](AtSpiTextReader& reader) { return reader.selectedRange(); });
}

std::optional<std::string> AtSpiElement::value() const {
    return utf8(readText<std::optional<QString>>(
        [](AtSpiTextReader& reader) { return reader.wholeText(); }));
}

std::optional<std::string> AtSpiElement::title() const {
    using Title = std::optional<QString>;
    return utf8(
        ask<Title>([](AtSpiBus& bus, AtSpiElementState& state, AtSpiDeadline& deadline) -> Title {
            const QList<QDBusMessage> replies = bus.callAll(
                {atspirequest::name(state.object), atspirequest::role(state.object)}, deadline);
            // What stands on a title bar says nothing about the text in the window.
            const Title name = atspireply::textProperty(replies.at(0), titleLimit);
            return isWindow(atspireply::unsignedInteger(replies.at(1))) ? std::nullopt : name;
        }));
}

std::optional<Rect> AtSpiElement::extents() const {
    using Extents = std::optional<Rect>;
    const Extents target =
        ask<Extents>([](AtSpiBus& bus, AtSpiElementState& state, AtSpiDeadline& deadline) {
            return atspireply::extents(
                bus.call(atspirequest::extents(state.object, state.space.coordinates()), deadline));
        });
    if (!target) {
        return std::nullopt;
    }
    const Rect capture = state_->space.captureFromTarget(*target);
    return capture.isFinite() ? std::optional(capture) : std::nullopt;
}

std::optional<Point> AtSpiElement::position() const {
    const std::optional<Rect> rect = extents();
    return rect ? std::optional(Point{rect->x, rect->y}) : std::nullopt;
}

std::optional<Size> AtSpiElement::size() const {
    const std::optional<Rect> rect = extents();
    return rect ? std::optional(rect->size()) : std::nullopt;
}

std::optional<std::int64_t> AtSpiElement::longValueLength() const {
    return readText<std::optional<std::int64_t>>(
        [](AtSpiTextReader& reader) { return reader.longLength(); });
}

std::optional<Utf16Range> AtSpiElement::rangeForPosition(Point point) const {
    return readText<std::optional<Utf16Range>>(
        [point](AtSpiTextReader& reader) { return reader.rangeAt(point); });
}

std::optional<std::string> AtSpiElement::stringForRange(Utf16Range range) const {
    return utf8(readText<std::optional<QString>>(
        [range](AtSpiTextReader& reader) { return reader.string(range); }));
}

std::optional<Rect> AtSpiElement::boundsForRange(Utf16Range range) const {
    return readText<std::optional<Rect>>(
        [range](AtSpiTextReader& reader) { return reader.bounds(range); });
}

bool AtSpiElement::equals(const AccessibilityElement& other) const {
    const auto* element = dynamic_cast<const AtSpiElement*>(&other);
    return element != nullptr && element->state_->object == state_->object;
}

}  // namespace velmora
