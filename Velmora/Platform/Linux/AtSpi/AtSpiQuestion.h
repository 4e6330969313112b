// SPDX-License-Identifier: MIT
#pragma once

#include <QDBusMessage>
#include <optional>
#include <utility>

#include "Velmora/Platform/Linux/AtSpi/AtSpiSpace.h"

namespace velmora {

/// A call that asks a program something. Where its first two arguments are a place, it also knows
/// the space that they are in, so that the same can be asked of another place.
struct AtSpiQuestion {
    // Implicit: most calls know no place and are written as they are.
    AtSpiQuestion(const QDBusMessage& call) : message(call) {}
    AtSpiQuestion(const QDBusMessage& call, AtSpiSpace placeSpace)
        : message(call), space(std::move(placeSpace)) {}

    QDBusMessage message;
    std::optional<AtSpiSpace> space;
};

}  // namespace velmora
