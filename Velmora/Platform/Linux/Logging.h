// SPDX-License-Identifier: MIT
#pragma once

namespace velmora {

/// Keeps standard output and error quiet, also from what the toolkit would say there, unless the
/// environment has `VELMORA_LOG=debug`; then everything is told with its category and time. Fatal
/// messages are always told. Call before the application object is made.
void installLogging();

/// Whether `VELMORA_LOG=debug` holds.
bool isDebugLoggingOn();

}  // namespace velmora
