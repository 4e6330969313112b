// SPDX-License-Identifier: MIT
#include "Velmora/Platform/Linux/IdleSteps.h"

#include <iterator>
#include <utility>

namespace velmora {

IdleSteps::IdleSteps() {
    // What is posted, unlike this, is taken whole before the loop looks for anything new.
    turn_.setInterval(0);
    QObject::connect(&turn_, &QTimer::timeout, &turn_, [this] { takeOne(); });
}

IdleSteps::~IdleSteps() = default;

void IdleSteps::add(std::vector<std::function<void()>> steps) {
    std::move(steps.begin(), steps.end(), std::back_inserter(steps_));
    turn_.start();
}

void IdleSteps::takeOne() {
    if (steps_.empty()) {
        turn_.stop();
        return;
    }
    const auto step = std::move(steps_.front());
    steps_.pop_front();
    step();
}

}  // namespace velmora
