// SPDX-License-Identifier: MIT
#pragma once

namespace velmora {

/// Whose coordinates a call speaks: the whole desktop's or the window's.
enum class AtSpiCoordinates : unsigned { screen = 0, window = 1 };

}  // namespace velmora
