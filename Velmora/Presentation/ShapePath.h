// SPDX-License-Identifier: MIT
#pragma once

#include <QPainterPath>
#include <QRegion>

namespace velmora {

/// A rectangle with round corners whose curvature grows gradually out of the straight edges
/// instead of setting in at once. The radius is lowered to half of the shorter side, where the
/// shape becomes a capsule with circular ends.
QPainterPath roundedPath(const QRectF& rect, double radius);

/// How far from its corner a side of such a rectangle becomes straight, where it is long enough.
double roundedEnd(double radius);

/// The whole points that lie in the shape, for windows that cannot be translucent.
QRegion roundedRegion(const QRect& rect, double radius);

}  // namespace velmora
