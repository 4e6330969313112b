// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "Velmora/Platform/Geometry.h"
#include "VelmoraCore/LookupResult.h"

namespace velmora {

/// What the popover panel holds: only the pinyin bubble, or the entry or selection card.
enum class LookupPresentationMode { pinyin, dictionary };

/// What is on screen now.
struct LookupPresentation {
    std::vector<LookupResult> results;  ///< The first is the hovered word.
    std::optional<std::string> selectedText;
    Rect anchor;  ///< The matched characters or the selection, in screen space.
    LookupPresentationMode mode = LookupPresentationMode::pinyin;

    bool operator==(const LookupPresentation&) const = default;
};

}  // namespace velmora
