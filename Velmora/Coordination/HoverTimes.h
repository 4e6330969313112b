// SPDX-License-Identifier: MIT
#pragma once

namespace velmora {

/// Writes a moment of a hover to the debug log, category `velmora.hover`, as its name and the
/// microseconds of CLOCK_MONOTONIC, which other processes share. Costs nothing where that log is
/// off. Never tells what was looked up. Any thread.
void noteHoverTime(const char* moment);

}  // namespace velmora
