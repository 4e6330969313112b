// SPDX-License-Identifier: MIT
#pragma once

#include <vector>

#include "Velmora/Platform/Recognition/InkMask.h"

namespace velmora {

/// The bounding boxes of the connected pieces of ink (diagonal neighbours count), in the order in
/// which their top left ends are met from the top.
std::vector<PixelBox> inkComponents(const InkMask& mask);

}  // namespace velmora
