// SPDX-License-Identifier: MIT
#include "Velmora/Platform/Linux/AtSpi/AtSpiForesight.h"

#include "Velmora/Platform/Linux/AtSpi/AtSpiRequest.h"

namespace velmora {

namespace {

constexpr auto moment = std::chrono::milliseconds(300);  // As long as an extraction may take.
constexpr qsizetype questionLimit = 160;
constexpr qsizetype programLimit = 16;

QString keyOf(const QDBusMessage& call) {
    QString key =
        call.service() + u' ' + call.path() + u' ' + call.interface() + u' ' + call.member();
    for (const QVariant& argument : call.arguments()) {
        key += u' ' + argument.toString();
    }
    return key;
}

}  // namespace

void AtSpiForesight::begin() {
    answers_.clear();
    begun_.clear();
    noted_.clear();
    if (asked_.size() > programLimit) {
        asked_.clear();
    }
}

QList<QDBusMessage> AtSpiForesight::expected(const QString& bus, std::optional<Point> capture) {
    QList<QDBusMessage> result;
    if (begun_.contains(bus)) {
        return result;
    }
    begun_.insert(bus);
    for (const AtSpiQuestion& question : asked_.take(bus)) {
        if (!question.space) {
            result.append(question.message);
        } else if (capture) {
            result.append(atspirequest::askedOf(question, *capture));
        }
    }
    return result;
}

void AtSpiForesight::note(const AtSpiQuestion& question) {
    const QString bus = question.message.service();
    const QString key = keyOf(question.message);
    if (begun_.contains(bus) && !noted_.contains(key) && asked_[bus].size() < questionLimit) {
        noted_.insert(key);
        asked_[bus].append(question);
    }
}

void AtSpiForesight::keep(const QDBusMessage& call, const QDBusMessage& reply) {
    answers_.insert(keyOf(call), {reply, Clock::now()});
}

std::optional<QDBusMessage> AtSpiForesight::answer(const QDBusMessage& call) const {
    const auto found = answers_.constFind(keyOf(call));
    const bool isFresh = found != answers_.constEnd() && Clock::now() - found->since < moment;
    return isFresh ? std::optional(found->reply) : std::nullopt;
}

void AtSpiForesight::forget(const QString& bus) {
    asked_.remove(bus);
}

void AtSpiForesight::forgetAll() {
    asked_.clear();
    begun_.clear();
    noted_.clear();
    answers_.clear();
}

}  // namespace velmora
