// SPDX-License-Identifier: MIT
#include "Velmora/Platform/Linux/AtSpi/AtSpiSpace.h"

#include <utility>

namespace velmora {

AtSpiSpace::AtSpiSpace(ScreenGeometry geometry, AtSpiCoordinates coordinates, Rect reported,
                       Rect native)
    : geometry_(std::move(geometry)),
      coordinates_(coordinates),
      reported_(reported),
      native_(native) {
    // A program that counts native pixels of the whole desktop is taken at its word; only where it
    // counts otherwise does its window tell how the two relate.
    if (coordinates_ == AtSpiCoordinates::screen &&
        ScreenGeometry::targetRatio(native_.width, reported_.width) == 1) {
        reported_ = native_;
    }
}

AtSpiSpace AtSpiSpace::shifted(double dx, double dy) const {
    AtSpiSpace result = *this;
    result.dx_ += dx;
    result.dy_ += dy;
    return result;
}

Point AtSpiSpace::targetFromCapture(Point capture) const {
    return targetFromNative(geometry_.nativeFromCapture(capture));
}

Point AtSpiSpace::targetFromNative(Point native) const {
    const Point target = ScreenGeometry::targetFromNative(native, reported_, native_);
    return {target.x - dx_, target.y - dy_};
}

Rect AtSpiSpace::captureFromTarget(const Rect& target) const {
    const Rect moved{target.x + dx_, target.y + dy_, target.width, target.height};
    return geometry_.captureFromNative(ScreenGeometry::nativeFromTarget(moved, reported_, native_));
}

}  // namespace velmora
