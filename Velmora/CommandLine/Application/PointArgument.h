// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include "Velmora/Platform/Geometry.h"

namespace velmora {

/// A position written "X,Y", two decimal numbers; throws `UsageError` for anything else.
Point pointArgument(const std::string& text);

}  // namespace velmora
