// SPDX-License-Identifier: MIT
#pragma once

namespace velmora::remotecontrol {

/// Where the running program is found on the session bus.
inline constexpr const char* serviceName = "com.velmora.Velmora";
inline constexpr const char* objectPath = "/com/velmora/Velmora";
inline constexpr const char* interfaceName = "com.velmora.Velmora1";

}  // namespace velmora::remotecontrol
