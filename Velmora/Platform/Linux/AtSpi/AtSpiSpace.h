// SPDX-License-Identifier: MIT
#pragma once

#include "Velmora/Platform/Geometry.h"
#include "Velmora/Platform/Linux/AtSpi/AtSpiCoordinates.h"
#include "Velmora/Platform/Linux/AtSpi/AtSpiToolkit.h"
#include "Velmora/Platform/ScreenGeometry.h"

namespace velmora {

/// How one window's own coordinates lie on the screen: what an element of it is asked with, and
/// where its answers are in capture space. An immutable value.
class AtSpiSpace {
  public:
    AtSpiSpace() = default;

    /// `reported` is where the program says its window stands, `native` where the window system
    /// says so.
    AtSpiSpace(ScreenGeometry geometry, AtSpiCoordinates coordinates, Rect reported, Rect native);

    /// The same window for elements whose positions all miss this much.
    AtSpiSpace shifted(double dx, double dy) const;

    AtSpiCoordinates coordinates() const { return coordinates_; }

    Point targetFromCapture(Point capture) const;
    Point targetFromNative(Point native) const;
    Rect captureFromTarget(const Rect& target) const;

  private:
    ScreenGeometry geometry_;
    AtSpiCoordinates coordinates_ = AtSpiCoordinates::screen;
    Rect reported_;
    Rect native_;
    double dx_ = 0;
    double dy_ = 0;
};

}  // namespace velmora
