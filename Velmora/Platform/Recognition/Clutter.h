// SPDX-License-Identifier: MIT
#pragma once

#include <vector>

#include "Velmora/Platform/Recognition/InkMask.h"

namespace velmora {

/// Takes long thin straight lines out of the picture and the mask: underlines, table rules, the
/// frames of buttons and fields even where several touch. A stroke of a character is never as long.
void removeRules(GrayImage& image, InkMask& mask);

/// Sorts out the pieces of ink that are no writing: large pictures, rules, frames of buttons and
/// fields, solid icons. Frames and icons are painted over in the picture and taken out of the
/// mask, so that they do not spoil the text beside or inside them. Returns what may be writing.
std::vector<PixelBox> removeClutter(const std::vector<PixelBox>& components, GrayImage& image,
                                    InkMask& mask);

}  // namespace velmora
