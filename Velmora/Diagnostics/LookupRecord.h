// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <span>
#include <string_view>

#include "Velmora/Platform/Geometry.h"
#include "Velmora/TextCapture/TextProbe.h"
#include "VelmoraCore/LookupResult.h"

namespace velmora {

/// What one hover led to. Refers to values that live as long as the call it is handed to. Points
/// and rectangles in screen space.
struct LookupRecord {
    std::string_view event = {};  ///< "lookup", "no_match" or "no_text".
    Point cursorPoint = {};
    const TextProbe* probe = nullptr;            ///< The captured text, if any.
    const LookupResult* match = nullptr;         ///< The word found, if any.
    std::span<const LookupResult> results = {};  ///< The words of a selection.
    std::optional<Rect> anchorRect = {};         ///< What the popover is anchored to, if anything.
    std::optional<std::string_view> mode =
        {};  ///< "pinyin" or "dictionary" where something is shown.
    std::optional<std::string_view> reason = {};  ///< Why nothing is shown.
};

}  // namespace velmora
