// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "Tests/Desktop/Support/HoverStage.h"

namespace velmora::test {

/// Something that goes wrong around our program, or just its ordinary day.
struct MainThreadFault {
    std::string name;

    /// Starts our program, lets the fault happen, uses the program meanwhile and afterwards, and
    /// gives what it wrote into its debug log. Throws where something does not come about that has
    /// to in spite of the fault. Our program gets the variables besides the desktop's.
    std::function<std::string(const ChildProcess::Environment&)> logUnder;
};

/// All of them. Each needs a private desktop of its own, one at a time.
const std::vector<MainThreadFault>& mainThreadFaults();

}  // namespace velmora::test
