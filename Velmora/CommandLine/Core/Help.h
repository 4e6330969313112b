// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string_view>

namespace velmora {

/// What `velmora --help` prints.
std::string_view generalHelp();

/// What `velmora COMMAND --help` prints for a command that the core answers, or nothing.
std::optional<std::string_view> helpOf(std::string_view command);

}  // namespace velmora
