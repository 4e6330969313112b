// SPDX-License-Identifier: MIT
#pragma once

#include <span>
#include <string>

#include "Velmora/CommandLine/Core/CommandStreams.h"

namespace velmora {

/// `velmora pinyin`: numbered pinyin to marked pinyin. Returns the exit status; throws
/// `UsageError`.
int runPinyinCommand(std::span<const std::string> arguments, CommandStreams& streams);

}  // namespace velmora
