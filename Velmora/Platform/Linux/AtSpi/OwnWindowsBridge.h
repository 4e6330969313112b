// SPDX-License-Identifier: MIT
#pragma once

namespace velmora {

class AtSpiService;

/// Lets assistive programs read our own windows. The toolkit's bridge to them asks the launcher of
/// the accessibility bus, its daemon and the registry on it, on the main thread and with half a
/// minute of patience for each answer. Here they are asked first, on the worker thread. Where one
/// of them keeps silent for half a second the bridge is made so that it asks nobody: the program
/// works, and our windows are not announced until it is started again. Where there is no
/// accessibility bus yet the bridge waits for it.
///
/// Main thread, once, with the application object made and before its event loop begins. Waits for
/// a second and a half at most.
void makeOwnWindowsBridge(AtSpiService& service);

}  // namespace velmora
