// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <string>

#include "Velmora/Platform/Clock.h"
#include "Velmora/Platform/MainQueue.h"
#include "Velmora/Platform/SerialQueue.h"

namespace velmora {

/// What every desktop has alike.

std::shared_ptr<Clock> makeClock();

/// The event loop of the calling thread.
std::shared_ptr<MainQueue> makeMainQueue();

/// A worker thread of its own, which ends when the queue goes.
std::shared_ptr<SerialQueue> makeSerialQueue(const std::string& label);

}  // namespace velmora
