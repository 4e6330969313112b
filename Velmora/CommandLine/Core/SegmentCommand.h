// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <span>
#include <string>

#include "Velmora/CommandLine/Core/CommandStreams.h"

namespace velmora {

/// The longest text that is read from standard input, in bytes.
inline constexpr std::size_t maximumSegmentInput = std::size_t{64} << 20;

/// The longest line of a text, in bytes.
inline constexpr std::size_t maximumSegmentLine = std::size_t{1} << 20;

/// `velmora segment`: the words of a text from left to right. Returns the exit status; throws
/// `UsageError`.
int runSegmentCommand(std::span<const std::string> arguments, CommandStreams& streams);

}  // namespace velmora
