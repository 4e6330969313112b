// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include "Velmora/Platform/AccessibilityElement.h"

namespace velmora {

/// A text that an element near the pointer exposes, to check recognised text against.
struct ReferenceSource {
    AccessibilityElement::Pointer element;
    std::string text;
};

}  // namespace velmora
