// SPDX-License-Identifier: MIT
#pragma once

#include "Velmora/Platform/Loader/PlatformBackends.h"

namespace velmora {

/// A desktop on an X display. Main thread; needs the application object.
PlatformBackends loadX11Platform();

}  // namespace velmora
