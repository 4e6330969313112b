// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <span>
#include <string>

#include "Velmora/CommandLine/Application/ProbeServices.h"
#include "Velmora/CommandLine/Core/CommandStreams.h"

namespace velmora {

/// What `velmora probe --help` prints.
std::string_view probeHelp();

/// `velmora probe`: what would be read at a point of the screen. `arguments` are those after the
/// command's name. `services` is called once the arguments are known to be good; it may throw
/// `UsageError` where there is no display. The extraction runs on the queue of the services and is
/// waited for; the queue must not be that of the caller. Returns the exit status; throws
/// `UsageError`.
int runProbeCommand(std::span<const std::string> arguments,
                    const std::function<ProbeServices()>& services, CommandStreams& streams);

}  // namespace velmora
