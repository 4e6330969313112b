// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

namespace velmora {

/// Runs the subcommand that `arguments` begin with and answers its exit status; 2 with a line on
/// standard error where there is no such subcommand.
int runApplicationCommand(const std::vector<std::string>& arguments);

}  // namespace velmora
