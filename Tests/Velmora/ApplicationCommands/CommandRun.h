// SPDX-License-Identifier: MIT
#pragma once

#include <sstream>
#include <string>

#include "Velmora/CommandLine/Core/CommandStreams.h"

namespace velmora {

/// The streams of one call of a command, as plain text.
struct CommandRun {
    std::istringstream in;
    std::ostringstream out;
    std::ostringstream err;
    CommandStreams streams{in, out, err, {}};
};

}  // namespace velmora
