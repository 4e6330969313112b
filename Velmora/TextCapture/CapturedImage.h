// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <optional>

#include "Velmora/Platform/Geometry.h"
#include "Velmora/Platform/Image.h"

namespace velmora {

/// A picture of a part of the screen and the rectangle that it shows (capture space, points),
/// which may be smaller than what was asked for.
struct CapturedImage {
    Image image;
    Rect captureRect;
};

/// Captures a rectangle of this size around the pointer (capture space); nothing where that fails.
/// Callable from any thread.
using CaptureFunction = std::function<std::optional<CapturedImage>(Point pointer, Size size)>;

}  // namespace velmora
