// SPDX-License-Identifier: MIT
#pragma once

namespace velmora::statusnotifier {

inline constexpr const char* itemPath = "/StatusNotifierItem";
inline constexpr const char* menuPath = "/StatusNotifierItem/Menu";
inline constexpr const char* watcherService = "org.kde.StatusNotifierWatcher";
inline constexpr const char* watcherPath = "/StatusNotifierWatcher";

}  // namespace velmora::statusnotifier
