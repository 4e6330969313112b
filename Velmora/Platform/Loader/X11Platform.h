// SPDX-License-Identifier: MIT
#pragma once

#include "Velmora/Platform/Loader/PlatformBackends.h"

namespace velmora {

/// To be called before the application object is made. The toolkit is to take the pointer's events
/// in their plain form: for the other one it asks the server about every device for each window
/// that it makes and each time that the pointer enters one, and waits.
void prepareX11Toolkit();

/// A desktop on an X display. Main thread; needs the application object.
PlatformBackends loadX11Platform();

}  // namespace velmora
