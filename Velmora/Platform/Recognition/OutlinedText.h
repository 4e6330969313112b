// SPDX-License-Identifier: MIT
#pragma once

#include "Velmora/Platform/Image.h"
#include "Velmora/Platform/Recognition/GrayImage.h"

namespace velmora {

/// Takes the bright core out of writing with a dark outline, as subtitles have it: the result is
/// black where a bright pixel has dark ones close by on opposite sides, and white elsewhere,
/// whatever the picture behind shows. `box` must lie within the picture.
GrayImage outlinedTextCore(const Image& image, const PixelBox& box);

}  // namespace velmora
