// SPDX-License-Identifier: MIT
#pragma once

#include <QPoint>
#include <QRect>
#include <QSize>

namespace velmora::traymenu {

/// A rectangle of the root window in native pixels as the toolkit counts: logical pixels, whose
/// screens begin where they do natively.
QRect logical(const QRect& native);

/// Where the top left corner of a menu of this size goes: below the icon where that is in the upper
/// half of its screen, else above it, and inside the screen. All in logical pixels.
QPoint place(const QRect& icon, const QSize& menu);

}  // namespace velmora::traymenu
