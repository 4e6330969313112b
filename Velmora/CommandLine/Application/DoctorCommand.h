// SPDX-License-Identifier: MIT
#pragma once

#include <span>
#include <string>
#include <string_view>

#include "Velmora/CommandLine/Core/CommandStreams.h"
#include "Velmora/Platform/SystemInspection.h"

namespace velmora {

std::string_view doctorHelp();

/// Tells of every part that the program needs whether it is there. Answers the exit status: 0 where
/// nothing is missing, else 1. Throws `UsageError` for wrong arguments.
int runDoctorCommand(std::span<const std::string> arguments, const SystemInspection& system,
                     CommandStreams& streams);

}  // namespace velmora
