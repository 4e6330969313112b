// SPDX-License-Identifier: MIT
#pragma once

#include <span>
#include <string>
#include <string_view>

namespace velmora {

/// True for a command that the desktop application answers: probe, recognize, doctor and the like.
bool belongsToApplication(std::string_view command);

/// Replaces this process by the application part (`velmora-app` beside this executable, else in
/// `../libexec/velmora` of it) with the same arguments. Returns only by throwing `UsageError`,
/// when it is not there or cannot be executed.
[[noreturn]] void executeApplicationPart(std::span<const std::string> arguments);

}  // namespace velmora
