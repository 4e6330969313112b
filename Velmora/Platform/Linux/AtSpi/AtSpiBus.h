// SPDX-License-Identifier: MIT
#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QList>
#include <QObject>
#include <QTimer>
#include <optional>

#include "Velmora/Platform/Linux/AtSpi/AtSpiDeadline.h"
#include "Velmora/Platform/Linux/AtSpi/AtSpiFocusMemory.h"
#include "Velmora/Platform/Linux/AtSpi/AtSpiForesight.h"
#include "Velmora/Platform/Linux/AtSpi/AtSpiGrant.h"
#include "Velmora/Platform/Linux/AtSpi/AtSpiHealth.h"
#include "Velmora/Platform/Linux/AtSpi/AtSpiObject.h"
#include "Velmora/Platform/Linux/AtSpi/AtSpiPresence.h"

namespace velmora {

/// The private connections to the session bus and the accessibility bus. Connects again when either
/// was gone, keeps the state of the grant current, and remembers where the keyboard focus went.
/// Worker thread only, construction included.
class AtSpiBus : public QObject {
    Q_OBJECT

  public:
    explicit AtSpiBus(AtSpiGrant& grant);
    ~AtSpiBus() override;

    /// Connects what is not connected; false where the accessibility bus cannot be reached. Tries
    /// once a second at most.
    bool connectNow();

    /// Counts the accessibility buses that were connected to: each gives out the same names anew,
    /// so what was learnt of a name holds for one of them only.
    int connectionNumber() const { return connectionNumber_; }

    /// Asks the launcher of the accessibility bus, its daemon and the registry on it for a sign of
    /// life, and waits half a second for each.
    AtSpiPresence presence();

    /// Switches the desktop's accessibility on and reads back whether it is.
    void switchOn();

    /// Sends all of them before waiting for the first answer. Each answer is an error where the
    /// program refuses, is being left alone, or did not answer in time; after the last of these no
    /// further call of this deadline is sent. The answers of `ahead` are not needed yet: where
    /// something has to be sent at all they come along and are there when they are asked for.
    QList<QDBusMessage> callAll(const QList<AtSpiQuestion>& questions, AtSpiDeadline& deadline,
                                const QList<QDBusMessage>& ahead = {});
    QDBusMessage call(const AtSpiQuestion& question, AtSpiDeadline& deadline);

    /// The same for what no other extraction will ask again, or what is asked once more because
    /// the first answer was none.
    QList<QDBusMessage> callOnce(const QList<QDBusMessage>& calls, AtSpiDeadline& deadline);
    QDBusMessage callOnce(const QDBusMessage& call, AtSpiDeadline& deadline);

    /// A new extraction: answers of the last one serve no more.
    void beginExtraction() { foresight_.begin(); }

    /// Asks the program at once what it will probably be asked in this extraction, at this point in
    /// capture space if there is one.
    void foresee(const QString& bus, std::optional<Point> capture, AtSpiDeadline& deadline);

    bool isLeftAlone(const QString& bus, AtSpiPurpose purpose);

    AtSpiFocusMemory& focus() { return focus_; }

  signals:
    /// The accessibility bus was connected to, again or for the first time, and the state of the
    /// grant is known.
    void connected();

    /// A program is gone from the accessibility bus, and its name with it.
    void programGone(const QString& bus);

  private slots:
    void statusChanged(const QString& interface, const QVariantMap& changed,
                       const QStringList& invalidated);
    void busOwnerChanged(const QString& name, const QString& before, const QString& after);
    void accessibilityDisconnected();
    void sessionDisconnected();
    void focusChanged(const QDBusMessage& signal);
    void programLeft(const QString& name, const QString& before, const QString& after);

  private:
    bool connectSession();
    bool connectAccessibility();
    std::optional<QString> askForAddress(int milliseconds);
    QDBusMessage askForStatus(int milliseconds);
    bool readStatus();
    void listenToFocus();
    void tryLater();
    void dropAccessibility();
    void dropSession();
    void sendTogether(const QList<QDBusMessage>& calls, AtSpiDeadline& deadline,
                      QList<QDBusMessage>& replies);
    QList<QDBusMessage> send(const QList<QDBusMessage>& calls, AtSpiDeadline& deadline);
    void blame(const QString& bus, AtSpiPurpose purpose, AtSpiDeadline::Milliseconds waited);

    AtSpiGrant& grant_;
    QDBusConnection session_;
    QDBusConnection accessibility_;
    int connectionNumber_ = 0;
    AtSpiHealth hoverHealth_;
    AtSpiHealth focusHealth_;
    AtSpiForesight foresight_;
    AtSpiFocusMemory focus_;
    std::optional<AtSpiDeadline::Clock::time_point> lastAttempt_;
    static constexpr std::chrono::milliseconds firstRetry{1000};
    std::chrono::milliseconds untilNextTry_ = firstRetry;
    QTimer retry_;
};

}  // namespace velmora
