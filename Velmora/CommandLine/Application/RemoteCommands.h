// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

namespace velmora {

/// The subcommands that reach the running program: settings, onboarding, toggle, diagnostics, quit.
bool isRemoteCommand(const std::string& name);

/// Runs one of them. `arguments` begin with its name. Answers the exit status: 0 done, 1 where no
/// program runs, 2 wrong usage.
int runRemoteCommand(const std::vector<std::string>& arguments);

}  // namespace velmora
