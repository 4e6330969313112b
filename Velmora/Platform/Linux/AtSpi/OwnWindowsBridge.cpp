// SPDX-License-Identifier: MIT
#include "Velmora/Platform/Linux/AtSpi/OwnWindowsBridge.h"

#include <QAccessible>
#include <QCoreApplication>
#include <QLoggingCategory>

#include "Velmora/Platform/Linux/AtSpi/AtSpiService.h"

namespace velmora {

namespace {

Q_LOGGING_CATEGORY(accessibilityLog, "velmora.accessibility")

// The first attempt to connect, the launcher and the registry, each with its own patience.
constexpr std::chrono::milliseconds longestWait{1500};

constexpr char addressVariable[] = "AT_SPI_BUS_ADDRESS";

}  // namespace

void makeOwnWindowsBridge(AtSpiService& service) {
    // Whoever names a bus gets that one, and the toolkit asks nobody for it.
    const bool isAtRisk = qEnvironmentVariableIsEmpty(addressVariable) &&
                          service.presence(longestWait) == AtSpiPresence::silent;
    if (isAtRisk) {
        qCWarning(accessibilityLog) << "the accessibility bus does not answer; assistive programs "
                                       "will not know of our windows";
        qputenv(addressVariable, "unix:path=/nonexistent");
    }
    // The bridge is made when something is asked of it for the first time.
    QAccessible::setRootObject(QCoreApplication::instance());
    if (isAtRisk) {
        // Programs that we start shall find the bus once it answers again.
        qunsetenv(addressVariable);
    }
}

}  // namespace velmora
