// SPDX-License-Identifier: MIT
#pragma once

#include <Qt>

namespace velmora {

/// Windows that stand above all others, full-screen ones included, are left alone by the window
/// manager and never take the focus, not even when they are clicked.
inline constexpr Qt::WindowFlags overlayFlags =
    Qt::ToolTip | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint | Qt::WindowDoesNotAcceptFocus;

/// The same for windows whose clicks reach what lies below them.
inline constexpr Qt::WindowFlags clickThroughFlags = overlayFlags | Qt::WindowTransparentForInput;

}  // namespace velmora
