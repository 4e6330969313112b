// SPDX-License-Identifier: MIT
#include "Velmora/Platform/Loader/GeneralServices.h"

#include "Velmora/Platform/Linux/EventLoopMainQueue.h"
#include "Velmora/Platform/Linux/SerialWorkerQueue.h"
#include "Velmora/Platform/Linux/SystemClock.h"

namespace velmora {

std::shared_ptr<Clock> makeClock() {
    return std::make_shared<SystemClock>();
}

std::shared_ptr<MainQueue> makeMainQueue() {
    return std::make_shared<EventLoopMainQueue>();
}

std::shared_ptr<SerialQueue> makeSerialQueue(const std::string& label) {
    return std::make_shared<SerialWorkerQueue>(label);
}

}  // namespace velmora
