// SPDX-License-Identifier: MIT
#pragma once

#include "Velmora/Platform/Loader/PlatformBackends.h"

namespace velmora {

/// Puts the reading of pixels into these backends. Nothing is loaded and no process started before
/// `startRecognition` is called; until the languages are there recognition answers nothing.
void addRecognition(PlatformBackends& backends);

}  // namespace velmora
