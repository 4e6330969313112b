// SPDX-License-Identifier: MIT
#pragma once

#include <istream>
#include <ostream>

#include "Velmora/CommandLine/Core/TextStyle.h"

namespace velmora {

/// Where a command reads and writes.
struct CommandStreams {
    std::istream& in;
    std::ostream& out;
    std::ostream& err;
    TextStyle style;  ///< How text for people is written to `out`.
};

}  // namespace velmora
