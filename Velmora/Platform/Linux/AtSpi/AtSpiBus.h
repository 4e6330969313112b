// SPDX-License-Identifier: MIT
#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QHash>
#include <QList>
#include <QObject>
#include <QTimer>
#include <optional>

#include "Velmora/Platform/Linux/AtSpi/AtSpiDeadline.h"
#include "Velmora/Platform/Linux/AtSpi/AtSpiGrant.h"
#include "Velmora/Platform/Linux/AtSpi/AtSpiHealth.h"
#include "Velmora/Platform/Linux/AtSpi/AtSpiObject.h"

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

    /// Switches the desktop's accessibility on and reads back whether it is.
    void switchOn();

    /// Sends all of them before waiting for the first answer. Each answer is an error where the
    /// program refuses, is being left alone, or did not answer in time; after the last of these no
    /// further call of this deadline is sent.
    QList<QDBusMessage> callAll(const QList<QDBusMessage>& requests, AtSpiDeadline& deadline);
    QDBusMessage call(const QDBusMessage& request, AtSpiDeadline& deadline);

    bool isLeftAlone(const QString& bus, AtSpiPurpose purpose);

    /// The object of this program that last got the focus since we listen.
    std::optional<AtSpiObject> lastFocus(const QString& bus) const;

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
    bool readStatus();
    void listenToFocus();
    void tryLater();
    void dropAccessibility();
    void dropSession();
    void callTogether(const QList<QDBusMessage>& requests, AtSpiDeadline& deadline,
                      QList<QDBusMessage>& replies);
    void blame(const QString& bus, AtSpiPurpose purpose, AtSpiDeadline::Milliseconds waited);

    AtSpiGrant& grant_;
    QDBusConnection session_;
    QDBusConnection accessibility_;
    int connectionNumber_ = 0;
    AtSpiHealth hoverHealth_;
    AtSpiHealth focusHealth_;
    QHash<QString, AtSpiObject> lastFocus_;
    std::optional<AtSpiDeadline::Clock::time_point> lastAttempt_;
    static constexpr std::chrono::milliseconds firstRetry{1000};
    std::chrono::milliseconds untilNextTry_ = firstRetry;
    QTimer retry_;
};

}  // namespace velmora
