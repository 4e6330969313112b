// SPDX-License-Identifier: MIT
#pragma once

#include <string_view>

namespace velmora {

/// Which attempt gave a probe.
enum class ExtractionPath {
    selection,      ///< The user's selection under the pointer.
    accessibility,  ///< The text around the pointer, asked of the element.
    recognition,    ///< Text recognised on the screen.
    wholeValue,     ///< The whole value of the element, the character estimated or searched.
};

/// The path's name as the command line prints it.
constexpr std::string_view name(ExtractionPath path) {
    switch (path) {
        case ExtractionPath::selection:
            return "selection";
        case ExtractionPath::accessibility:
            return "accessibility";
        case ExtractionPath::recognition:
            return "recognition";
        case ExtractionPath::wholeValue:
            return "wholeValue";
    }
    return "";
}

}  // namespace velmora
