// SPDX-License-Identifier: MIT
#pragma once

#include <QHash>
#include <QObject>
#include <cstdint>
#include <optional>

#include "Velmora/Platform/Linux/AtSpi/AtSpiBus.h"
#include "Velmora/Platform/Linux/AtSpi/AtSpiObject.h"
#include "Velmora/Platform/Linux/AtSpi/AtSpiToolkit.h"

namespace velmora {

/// One program on the accessibility bus.
struct AtSpiApplication {
    AtSpiObject root;
    AtSpiToolkit toolkit = AtSpiToolkit::other;
};

/// Finds programs by their process. The registry is asked for each one until it is found; from then
/// on it is known until it leaves the bus. Worker thread only.
class AtSpiApplications {
  public:
    explicit AtSpiApplications(AtSpiBus& bus);

    /// Nothing where no program of this process is on the bus, or it does not say what it is.
    std::optional<AtSpiApplication> find(std::int64_t processId, AtSpiDeadline& deadline);

  private:
    void learnProcesses(const QList<AtSpiObject>& roots, AtSpiDeadline& deadline);
    std::optional<AtSpiToolkit> toolkitOf(const AtSpiObject& root, AtSpiDeadline& deadline);

    AtSpiBus& bus_;
    int connectionNumber_ = 0;  ///< Of the bus whose names are known.
    QHash<QString, std::uint32_t> processes_;
    QHash<std::int64_t, AtSpiApplication> known_;
    QObject context_;  ///< Ends the connection to the bus's signals.
};

}  // namespace velmora
