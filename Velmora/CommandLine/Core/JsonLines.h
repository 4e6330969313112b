// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "Velmora/CommandLine/Core/CommandStreams.h"
#include "VelmoraCore/LookupEngine.h"

namespace velmora {

/// The longest line that is answered, in bytes without its line end.
inline constexpr std::size_t maximumJsonLineLength = std::size_t{1} << 20;

/// The deepest nesting of arrays and objects that is answered.
inline constexpr std::size_t maximumJsonDepth = 16;

/// The answer to one line {"text": string, "offset": integer}: the result as one line of JSON,
/// "null" where nothing is found, or {"error": text} for anything else. Never throws for what the
/// line holds.
std::string answerJsonLine(std::string_view line, const LookupEngine& engine);

/// Answers every line of the input with one flushed line, until the input or the output ends.
void answerJsonLines(const LookupEngine& engine, CommandStreams& streams);

}  // namespace velmora
