// SPDX-License-Identifier: MIT
#include "Velmora/Platform/Linux/AtSpi/AtSpiBus.h"

#include <QDBusPendingCall>
#include <QDBusVariant>
#include <algorithm>
#include <atomic>
#include <iterator>

#include "Velmora/Platform/Linux/AtSpi/AtSpiReply.h"
#include "Velmora/Platform/Linux/AtSpi/AtSpiRequest.h"
#include "Velmora/Platform/Linux/BusHandshake.h"

namespace velmora {

namespace {

constexpr int ownCallMilliseconds = 150;
// Who is only slow shall not be taken for one who never answers.
constexpr int signOfLifeMilliseconds = 500;
// The last rest of a query's time is too short to tell a silent program from a busy one.
constexpr AtSpiDeadline::Milliseconds leastWaitToBlame{50};
constexpr AtSpiDeadline::Milliseconds leastFocusWaitToBlame{25};
constexpr std::chrono::milliseconds rarestTry{30000};
constexpr auto betweenAttempts = std::chrono::seconds(1);
constexpr qsizetype pipelineLimit = 128;
constexpr qsizetype addressLimit = 4096;

const QString busName = QStringLiteral("org.a11y.Bus");
const QString busPath = QStringLiteral("/org/a11y/bus");
const QString statusInterface = QStringLiteral("org.a11y.Status");
const QString propertiesInterface = QStringLiteral("org.freedesktop.DBus.Properties");
const QString daemonName = QStringLiteral("org.freedesktop.DBus");
const QString daemonPath = QStringLiteral("/org/freedesktop/DBus");
const QString localPath = QStringLiteral("/org/freedesktop/DBus/Local");
const QString localInterface = QStringLiteral("org.freedesktop.DBus.Local");

/// Connections are kept by name in the whole process; ours are never shared.
QString freshName(const char* kind) {
    static std::atomic<int> number = 0;
    return QStringLiteral("velmora-%1-%2").arg(QLatin1String(kind)).arg(++number);
}

/// By its address where it is known: the library would keep the first one that it saw for good.
QDBusConnection connectToSessionBus() {
    const QString address = qEnvironmentVariable("DBUS_SESSION_BUS_ADDRESS");
    return address.isEmpty()
               ? QDBusConnection::connectToBus(QDBusConnection::SessionBus, freshName("session"))
               : QDBusConnection::connectToBus(address, freshName("session"));
}

QDBusMessage refusal(const QDBusMessage& request) {
    return request.createErrorReply(QDBusError::NoReply, QStringLiteral("not asked"));
}

BusHandshake knock(const QString& address, int milliseconds) {
    return shakeHandsWithBus(address.toStdString(), std::chrono::milliseconds(milliseconds));
}

QDBusMessage registryCall(const QString& method) {
    const QString registry = atspirequest::registryRoot().bus;
    return QDBusMessage::createMethodCall(registry, QStringLiteral("/org/a11y/atspi/registry"),
                                          registry, method);
}

}  // namespace

AtSpiBus::AtSpiBus(AtSpiGrant& grant)
    : grant_(grant), session_(QString()), accessibility_(QString()) {
    retry_.setSingleShot(true);
    connect(&retry_, &QTimer::timeout, this, [this] {
        lastAttempt_.reset();
        connectNow();
    });
    connectNow();
}

AtSpiBus::~AtSpiBus() {
    dropAccessibility();
    dropSession();
}

bool AtSpiBus::connectNow() {
    if (session_.isConnected() && accessibility_.isConnected()) {
        return true;
    }
    const auto now = AtSpiDeadline::Clock::now();
    if (lastAttempt_ && now - *lastAttempt_ < betweenAttempts) {
        return false;
    }
    lastAttempt_ = now;
    if (connectSession() && connectAccessibility()) {
        untilNextTry_ = firstRetry;
        return true;
    }
    tryLater();
    return false;
}

void AtSpiBus::tryLater() {
    // Rarer and rarer; while both are connected there is no timer at all.
    if (!retry_.isActive()) {
        retry_.start(untilNextTry_);
        untilNextTry_ = std::min(2 * untilNextTry_, rarestTry);
    }
}

bool AtSpiBus::connectSession() {
    if (session_.isConnected()) {
        return true;
    }
    dropSession();
    session_ = connectToSessionBus();
    if (!session_.isConnected()) {
        return false;
    }
    session_.connect(busName, busPath, propertiesInterface, QStringLiteral("PropertiesChanged"),
                     this, SLOT(statusChanged(QString, QVariantMap, QStringList)));
    session_.connect(daemonName, daemonPath, daemonName, QStringLiteral("NameOwnerChanged"),
                     {busName}, QStringLiteral("sss"), this,
                     SLOT(busOwnerChanged(QString, QString, QString)));
    session_.connect(QString(), localPath, localInterface, QStringLiteral("Disconnected"), this,
                     SLOT(sessionDisconnected()));
    return true;
}

bool AtSpiBus::connectAccessibility() {
    if (accessibility_.isConnected()) {
        return true;
    }
    dropAccessibility();
    const std::optional<QString> address = askForAddress(2 * ownCallMilliseconds);
    if (!address || knock(*address, 2 * ownCallMilliseconds) != BusHandshake::answered) {
        return false;
    }
    accessibility_ = QDBusConnection::connectToBus(*address, freshName("accessibility"));
    if (!accessibility_.isConnected()) {
        return false;
    }
    ++connectionNumber_;
    accessibility_.connect(QString(), localPath, localInterface, QStringLiteral("Disconnected"),
                           this, SLOT(accessibilityDisconnected()));
    if (!readStatus()) {
        dropAccessibility();
        return false;
    }
    listenToFocus();
    grant_.reachable = true;
    emit connected();
    return true;
}

std::optional<QString> AtSpiBus::askForAddress(int milliseconds) {
    const QDBusMessage request =
        QDBusMessage::createMethodCall(busName, busPath, busName, QStringLiteral("GetAddress"));
    const std::optional<QString> address =
        atspireply::text(session_.call(request, QDBus::Block, milliseconds), addressLimit);
    return address && !address->isEmpty() ? address : std::nullopt;
}

QDBusMessage AtSpiBus::askForStatus(int milliseconds) {
    QDBusMessage request = QDBusMessage::createMethodCall(busName, busPath, propertiesInterface,
                                                          QStringLiteral("Get"));
    request.setArguments({statusInterface, QStringLiteral("IsEnabled")});
    return session_.call(request, QDBus::Block, milliseconds);
}

bool AtSpiBus::readStatus() {
    const QDBusMessage reply = askForStatus(ownCallMilliseconds);
    if (reply.type() != QDBusMessage::ReplyMessage || reply.signature() != QLatin1String("v")) {
        return false;
    }
    grant_.switchedOn = reply.arguments().at(0).value<QDBusVariant>().variant().toBool();
    return true;
}

AtSpiPresence AtSpiBus::presence() {
    if (!connectSession()) {
        return AtSpiPresence::absent;
    }
    QDBusMessage owner = QDBusMessage::createMethodCall(daemonName, daemonPath, daemonName,
                                                        QStringLiteral("NameHasOwner"));
    owner.setArguments({busName});
    const QDBusMessage owned = session_.call(owner, QDBus::Block, signOfLifeMilliseconds);
    if (!atspireply::isTimeout(owned) && !owned.arguments().value(0).toBool()) {
        return AtSpiPresence::absent;
    }
    if (atspireply::isTimeout(askForStatus(signOfLifeMilliseconds))) {
        return AtSpiPresence::silent;
    }
    const std::optional<QString> address = askForAddress(signOfLifeMilliseconds);
    if (address && knock(*address, signOfLifeMilliseconds) == BusHandshake::silent) {
        return AtSpiPresence::silent;
    }
    lastAttempt_.reset();
    if (!connectNow()) {
        return AtSpiPresence::absent;
    }
    const QDBusMessage registry = registryCall(QStringLiteral("GetRegisteredEvents"));
    return atspireply::isTimeout(
               accessibility_.call(registry, QDBus::Block, signOfLifeMilliseconds))
               ? AtSpiPresence::silent
               : AtSpiPresence::answering;
}

void AtSpiBus::switchOn() {
    lastAttempt_.reset();
    if (!connectSession()) {
        return;
    }
    QDBusMessage request = QDBusMessage::createMethodCall(busName, busPath, propertiesInterface,
                                                          QStringLiteral("Set"));
    request.setArguments(
        {statusInterface, QStringLiteral("IsEnabled"), QVariant::fromValue(QDBusVariant(true))});
    session_.call(request, QDBus::Block, ownCallMilliseconds);
    connectAccessibility();
    readStatus();
}

void AtSpiBus::listenToFocus() {
    accessibility_.connect(QString(), QString(), QStringLiteral("org.a11y.atspi.Event.Object"),
                           QStringLiteral("StateChanged"), {QStringLiteral("focused")}, QString(),
                           this, SLOT(focusChanged(QDBusMessage)));
    accessibility_.connect(daemonName, daemonPath, daemonName, QStringLiteral("NameOwnerChanged"),
                           {}, QStringLiteral("sss"), this,
                           SLOT(programLeft(QString, QString, QString)));
    // Programs tell only what somebody registered for. Nobody has to wait for this answer.
    QDBusMessage request = registryCall(QStringLiteral("RegisterEvent"));
    request.setArguments(
        {QStringLiteral("object:state-changed:focused"), QStringList(), QString()});
    accessibility_.asyncCall(request);
}

void AtSpiBus::dropAccessibility() {
    grant_.reachable = false;
    focus_.forgetAll();
    foresight_.forgetAll();
    hoverHealth_.forgetAll();
    focusHealth_.forgetAll();
    if (!accessibility_.name().isEmpty()) {
        QDBusConnection::disconnectFromBus(accessibility_.name());
        accessibility_ = QDBusConnection(QString());
    }
}

void AtSpiBus::dropSession() {
    grant_.switchedOn = false;
    if (!session_.name().isEmpty()) {
        QDBusConnection::disconnectFromBus(session_.name());
        session_ = QDBusConnection(QString());
    }
}

void AtSpiBus::statusChanged(const QString& interface, const QVariantMap& changed,
                             const QStringList& invalidated) {
    if (interface != statusInterface) {
        return;
    }
    const auto found = changed.constFind(QStringLiteral("IsEnabled"));
    if (found != changed.constEnd()) {
        grant_.switchedOn = found->toBool();
    } else if (invalidated.contains(QStringLiteral("IsEnabled"))) {
        readStatus();
    }
}

void AtSpiBus::busOwnerChanged(const QString&, const QString&, const QString& after) {
    dropAccessibility();
    grant_.switchedOn = false;
    // Whoever takes its place may not be ready yet, and nobody else may ever ask for one.
    if (after.isEmpty() || !connectAccessibility()) {
        tryLater();
    }
}

void AtSpiBus::accessibilityDisconnected() {
    dropAccessibility();
    tryLater();
}

void AtSpiBus::sessionDisconnected() {
    dropAccessibility();
    dropSession();
    tryLater();
}

void AtSpiBus::focusChanged(const QDBusMessage& signal) {
    const QVariantList values = signal.arguments();
    if (values.size() < 2 || values.at(1).typeId() != QMetaType::Int) {
        return;
    }
    focus_.tell({signal.service(), signal.path()}, values.at(1).toInt() != 0);
}

void AtSpiBus::programLeft(const QString& name, const QString&, const QString& after) {
    if (after.isEmpty()) {
        focus_.forget(name);
        foresight_.forget(name);
        emit programGone(name);
    }
}

QList<QDBusMessage> AtSpiBus::callAll(const QList<AtSpiQuestion>& questions,
                                      AtSpiDeadline& deadline, const QList<QDBusMessage>& ahead) {
    QList<QDBusMessage> replies(questions.size());
    QList<QDBusMessage> calls;
    QList<qsizetype> places;
    const bool foresees = deadline.purpose() != AtSpiPurpose::mainThread && !deadline.isOver();
    for (qsizetype i = 0; i < questions.size(); ++i) {
        std::optional<QDBusMessage> known;
        if (foresees) {
            foresight_.note(questions.at(i));
            known = foresight_.answer(questions.at(i).message);
        }
        if (known) {
            replies[i] = *known;
        } else {
            calls.append(questions.at(i).message);
            places.append(i);
        }
    }
    if (calls.isEmpty()) {
        return replies;
    }
    if (foresees) {
        std::copy_if(ahead.begin(), ahead.end(), std::back_inserter(calls),
                     [this](const QDBusMessage& call) { return !foresight_.answer(call); });
    }
    const QList<QDBusMessage> answers = send(calls, deadline);
    for (qsizetype i = 0; i < calls.size(); ++i) {
        if (i < places.size()) {
            replies[places.at(i)] = answers.at(i);
        }
        if (foresees) {
            foresight_.keep(calls.at(i), answers.at(i));
        }
    }
    return replies;
}

QDBusMessage AtSpiBus::call(const AtSpiQuestion& question, AtSpiDeadline& deadline) {
    return callAll({question}, deadline).first();
}

QList<QDBusMessage> AtSpiBus::callOnce(const QList<QDBusMessage>& calls, AtSpiDeadline& deadline) {
    return send(calls, deadline);
}

QDBusMessage AtSpiBus::callOnce(const QDBusMessage& call, AtSpiDeadline& deadline) {
    return send({call}, deadline).first();
}

void AtSpiBus::foresee(const QString& bus, std::optional<Point> capture, AtSpiDeadline& deadline) {
    const QList<QDBusMessage> calls = foresight_.expected(bus, capture);
    const QList<QDBusMessage> answers = send(calls, deadline);
    for (qsizetype i = 0; i < calls.size(); ++i) {
        foresight_.keep(calls.at(i), answers.at(i));
    }
}

QList<QDBusMessage> AtSpiBus::send(const QList<QDBusMessage>& calls, AtSpiDeadline& deadline) {
    QList<QDBusMessage> replies;
    replies.reserve(calls.size());
    for (qsizetype first = 0; first < calls.size(); first += pipelineLimit) {
        sendTogether(calls.mid(first, pipelineLimit), deadline, replies);
    }
    return replies;
}

void AtSpiBus::sendTogether(const QList<QDBusMessage>& calls, AtSpiDeadline& deadline,
                            QList<QDBusMessage>& replies) {
    const auto timeout = deadline.forNextCall();
    QList<std::optional<QDBusPendingCall>> pending;
    for (const QDBusMessage& call : calls) {
        if (timeout.count() > 0 && accessibility_.isConnected() &&
            !isLeftAlone(call.service(), deadline.purpose())) {
            pending.append(accessibility_.asyncCall(call, static_cast<int>(timeout.count())));
        } else {
            pending.append(std::nullopt);
        }
    }
    for (qsizetype i = 0; i < calls.size(); ++i) {
        if (!pending.at(i)) {
            replies.append(refusal(calls.at(i)));
            continue;
        }
        pending[i]->waitForFinished();
        replies.append(pending.at(i)->reply());
        if (atspireply::isTimeout(replies.last())) {
            deadline.giveUp();
            blame(calls.at(i).service(), deadline.purpose(), timeout);
        }
    }
}

void AtSpiBus::blame(const QString& bus, AtSpiPurpose purpose, AtSpiDeadline::Milliseconds waited) {
    if (purpose == AtSpiPurpose::hover && waited >= leastWaitToBlame) {
        hoverHealth_.leaveAlone(bus, accessibility_);
    } else if (purpose == AtSpiPurpose::focus && waited >= leastFocusWaitToBlame) {
        focusHealth_.leaveAlone(bus, accessibility_);
    }
}

bool AtSpiBus::isLeftAlone(const QString& bus, AtSpiPurpose purpose) {
    return hoverHealth_.isLeftAlone(bus) ||
           (purpose != AtSpiPurpose::hover && focusHealth_.isLeftAlone(bus));
}

}  // namespace velmora
